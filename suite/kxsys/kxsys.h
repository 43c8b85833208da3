/* kxsys.h - the suite's system services, kxsys.dll: one common log, and the message boxes of the suite. Plain
 * C.
 *
 * Loaded by name at run time; every export is undecorated and stdcall, with 32-bit arguments and a 32-bit
 * result. Texts are zero-terminated Windows-1252; of each the first KXSYS_LONGEST_TEXT bytes are used. A null
 * or unreadable text counts as empty and never stops the caller.
 *
 * Each report becomes one line of the log file, which stands beside the module under the module's own name
 * with the extension .log (kxsys.log) and only ever grows. A file that cannot be written is no failure: the
 * line is then only heard by the listener. A line is
 *
 *     2024-05-31 13:04:59.250 <tab> KIND <tab> TEXT
 *
 * in local time, where KIND is one of the Italian words below and TEXT holds no tab and no line end. In the
 * file a line ends with CR LF.
 */
#ifndef KXSYS_H
#define KXSYS_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#define KXSYS_CALL __stdcall

enum { KXSYS_LONGEST_TEXT = 1024 };

/* ---- what the host may ask of this module beyond the suite's contract ---- */

/* A report line, without a line end; it lives for the length of the call. */
typedef void(KXSYS_CALL* KxSysListener)(void* context, const char* line);

/* From now on `callback` is called with `context` for every report, on the reporting thread, after the line
 * was written. It may report itself. One listener at a time; null ends it. Returns 1. */
uint32_t KXSYS_CALL SETLISTENER(KxSysListener callback, void* context);

/* Other than 0: no message box is shown from now on, and INQUIRE answers by its default. 0: boxes are shown,
 * as at the beginning. Returns the mode before. */
uint32_t KXSYS_CALL SETBATCHMODE(uint32_t flag);

/* ---- the suite's contract ---- */

/* Both may be called any number of times: the log needs no start and no end. */
void KXSYS_CALL LIBSTART(void);
void KXSYS_CALL LIBSTOP(void);

/* Reports. KIND and TEXT are as shown; `source` is the name of the reporting source. The result is 1 when the
 * line was written or heard, else 0. */
uint32_t KXSYS_CALL LOGMEMORYERROR(const char* source, uint32_t line); /* "Memoria": "SOURCE, riga LINE" */
uint32_t KXSYS_CALL LOGOEMERROR(const char* source, uint32_t line,
                                const char* text);          /* "Programma": "TEXT (SOURCE, riga LINE)" */
uint32_t KXSYS_CALL LOGEXCEPTION(const char* context);      /* "Eccezione" */
uint32_t KXSYS_CALL LOGSYSTEMERROR(const char* text);       /* "Sistema" */
uint32_t KXSYS_CALL LOGINFORMATION(const char* text);       /* "Informazione" */
uint32_t KXSYS_CALL LOGOEMMESSAGE(const char* text);        /* "Messaggio" */
uint32_t KXSYS_CALL LOGSERVICESTART(const char* text);      /* "Avvio" */
uint32_t KXSYS_CALL LOGSERVICESTOP(const char* text);       /* "Arresto" */
uint32_t KXSYS_CALL LOGTHREADSTART(uint32_t thread);        /* "Thread": "avviato VALUE" */
uint32_t KXSYS_CALL LOGTHREADSTOP(uint32_t thread);         /* "Thread": "terminato VALUE" */
uint32_t KXSYS_CALL LOGCOMWRITE(uint32_t port, uint32_t v); /* "Seriale": "scrittura VALUE, VALUE" */
uint32_t KXSYS_CALL LOGCOMREAD(uint32_t port, uint32_t v);  /* "Seriale": "lettura VALUE, VALUE" */

/* Reports of the same kinds that are also shown in a message box over the owner, a window object whose second
 * 32-bit word is its window handle (null, or no window there: no owner). They return after the box, and
 * always 1. */
uint32_t KXSYS_CALL SHOWINFORMATION(const void* owner, const char* text); /* "Informazione" */
uint32_t KXSYS_CALL SHOWSYSTEMERROR(const void* owner, const char* text); /* "Sistema" */

/* Asks yes or no over the owner: 1 for yes, 0 for no. yesByDefault other than 0: yes is the default, else no.
 * KIND "Domanda", TEXT the question and the answer. */
uint32_t KXSYS_CALL INQUIRE(const void* owner, const char* text, uint32_t yesByDefault);

/* A second screen and electronic mail, which this module does not have: the request is logged ("Schermo",
 * "Posta": "VALUE, VALUE") and answered by 0, not done. */
uint32_t KXSYS_CALL DISPLAY(uint32_t first, uint32_t second);
uint32_t KXSYS_CALL SENDEMAIL(uint32_t first, uint32_t second);

#ifdef __cplusplus
}
#endif

#endif
