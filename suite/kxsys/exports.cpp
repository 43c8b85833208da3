// The exports of kxsys.dll; see kxsys.h.
#include <windows.h>

#include <atomic>
#include <cstdint>
#include <cstdio>

#include "suite/kxsys/caller_memory.h"
#include "suite/kxsys/kxsys.h"
#include "suite/kxsys/log_file.h"
#include "suite/kxsys/message_box.h"
#include "suite/kxsys/report_line.h"

namespace {

using kx::sys::CallerText;

std::atomic<bool> batchMode{false};

struct Listener {
    KxSysListener callback;
    void* context;
};
SRWLOCK listenerLock = SRWLOCK_INIT;
Listener listener = {};

// Copied out, so that a listener may report or replace itself.
Listener CurrentListener() {
    AcquireSRWLockShared(&listenerLock);
    const Listener current = listener;
    ReleaseSRWLockShared(&listenerLock);
    return current;
}

kx::sys::ReportTime Now() {
    SYSTEMTIME now;
    GetLocalTime(&now);
    return {now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond, now.wMilliseconds};
}

std::uint32_t Report(const char* kind, const char* text) {
    // A report leaves no trace in its caller, who may go on to ask for the error that made it report.
    const DWORD lastError = GetLastError();
    char line[kx::sys::kLineSize];
    const std::size_t length = kx::sys::ComposeLine(line, Now(), kind, text);
    const bool written = kx::sys::AppendToLog(line, length);
    const Listener current = CurrentListener();
    if (current.callback != nullptr) {
        current.callback(current.context, line);
    }
    SetLastError(lastError);
    return written || current.callback != nullptr ? 1 : 0;
}

std::uint32_t ReportCallerText(const char* kind, const char* text) {
    return Report(kind, CallerText(text).Text());
}

template <class... Values>
std::uint32_t ReportFormat(const char* kind, const char* format, Values... values) {
    char text[kx::sys::kLineSize];
    std::snprintf(text, sizeof text, format, values...);
    return Report(kind, text);
}

void ShowReport(const void* owner, const char* text, const char* kind, const wchar_t* title, UINT icon) {
    const CallerText copy(text);
    Report(kind, copy.Text());
    if (!batchMode) {
        kx::sys::ShowBox(kx::sys::OwnerWindow(owner), copy.Text(), title, MB_OK | icon);
    }
}

}  // namespace

void KXSYS_CALL LIBSTART(void) {}

void KXSYS_CALL LIBSTOP(void) {}

uint32_t KXSYS_CALL SETLISTENER(KxSysListener callback, void* context) {
    AcquireSRWLockExclusive(&listenerLock);
    listener = {callback, context};
    ReleaseSRWLockExclusive(&listenerLock);
    return 1;
}

uint32_t KXSYS_CALL SETBATCHMODE(uint32_t flag) {
    return batchMode.exchange(flag != 0) ? 1 : 0;
}

uint32_t KXSYS_CALL LOGMEMORYERROR(const char* source, uint32_t line) {
    return ReportFormat("Memoria", "%s, riga %u", CallerText(source).Text(), line);
}

uint32_t KXSYS_CALL LOGOEMERROR(const char* source, uint32_t line, const char* text) {
    return ReportFormat("Programma", "%s (%s, riga %u)", CallerText(text).Text(), CallerText(source).Text(),
                        line);
}

uint32_t KXSYS_CALL LOGEXCEPTION(const char* context) {
    return ReportCallerText("Eccezione", context);
}

uint32_t KXSYS_CALL LOGSYSTEMERROR(const char* text) {
    return ReportCallerText("Sistema", text);
}

uint32_t KXSYS_CALL LOGINFORMATION(const char* text) {
    return ReportCallerText("Informazione", text);
}

uint32_t KXSYS_CALL LOGOEMMESSAGE(const char* text) {
    return ReportCallerText("Messaggio", text);
}

uint32_t KXSYS_CALL LOGSERVICESTART(const char* text) {
    return ReportCallerText("Avvio", text);
}

uint32_t KXSYS_CALL LOGSERVICESTOP(const char* text) {
    return ReportCallerText("Arresto", text);
}

uint32_t KXSYS_CALL LOGTHREADSTART(uint32_t thread) {
    return ReportFormat("Thread", "avviato %u", thread);
}

uint32_t KXSYS_CALL LOGTHREADSTOP(uint32_t thread) {
    return ReportFormat("Thread", "terminato %u", thread);
}

uint32_t KXSYS_CALL LOGCOMWRITE(uint32_t port, uint32_t v) {
    return ReportFormat("Seriale", "scrittura %u, %u", port, v);
}

uint32_t KXSYS_CALL LOGCOMREAD(uint32_t port, uint32_t v) {
    return ReportFormat("Seriale", "lettura %u, %u", port, v);
}

uint32_t KXSYS_CALL SHOWINFORMATION(const void* owner, const char* text) {
    ShowReport(owner, text, "Informazione", L"Informazione", MB_ICONINFORMATION);
    return 1;
}

uint32_t KXSYS_CALL SHOWSYSTEMERROR(const void* owner, const char* text) {
    ShowReport(owner, text, "Sistema", L"Errore di sistema", MB_ICONERROR);
    return 1;
}

uint32_t KXSYS_CALL INQUIRE(const void* owner, const char* text, uint32_t yesByDefault) {
    const CallerText question(text);
    bool yes = yesByDefault != 0;
    if (!batchMode) {
        const UINT defaultButton = yes ? MB_DEFBUTTON1 : MB_DEFBUTTON2;
        yes = kx::sys::ShowBox(kx::sys::OwnerWindow(owner), question.Text(), L"Domanda",
                               MB_YESNO | MB_ICONQUESTION | defaultButton) == IDYES;
    }
    ReportFormat("Domanda", "%s %s", question.Text(), yes ? "S\xEC" : "No");
    return yes ? 1 : 0;
}

uint32_t KXSYS_CALL DISPLAY(uint32_t first, uint32_t second) {
    ReportFormat("Schermo", "%u, %u", first, second);
    return 0;
}

uint32_t KXSYS_CALL SENDEMAIL(uint32_t first, uint32_t second) {
    ReportFormat("Posta", "%u, %u", first, second);
    return 0;
}
