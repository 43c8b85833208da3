#include "tests/rig/raw_printer.h"

#include <windows.h>
#include <winspool.h>

#include <fstream>
#include <iterator>

namespace kx::test {
namespace {

constexpr char kPorts[] = "Software\\Microsoft\\Windows NT\\CurrentVersion\\Ports";
char g_driver[] = "Kx raw test driver";
char g_printer[] = "Kx raw test printer";

bool SetPort(const std::string& port, bool there) {
    HKEY key = nullptr;
    if (RegCreateKeyExA(HKEY_LOCAL_MACHINE, kPorts, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr) != 0) {
        return false;
    }
    const LSTATUS status =
        there ? RegSetValueExA(key, port.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(""), 1) : RegDeleteValueA(key, port.c_str());
    RegCloseKey(key);
    return status == 0;
}

bool AddDriver() {
    char environment[] = "Windows NT x86", file[] = "wineps.drv", none[] = "";
    DRIVER_INFO_3A driver{};
    driver.cVersion = 3;
    driver.pName = g_driver;
    driver.pEnvironment = environment;
    driver.pDriverPath = driver.pDataFile = driver.pConfigFile = file;
    driver.pHelpFile = driver.pDependentFiles = driver.pMonitorName = driver.pDefaultDataType = none;
    return AddPrinterDriverExA(nullptr, 3, reinterpret_cast<BYTE*>(&driver), APD_COPY_NEW_FILES | APD_COPY_FROM_DIRECTORY) != FALSE ||
           GetLastError() == ERROR_PRINTER_DRIVER_ALREADY_INSTALLED;
}

}  // namespace

RawPrinter::RawPrinter(Port port) {
    char folder[MAX_PATH] = {}, file[MAX_PATH] = {};
    GetTempPathA(MAX_PATH, folder);
    GetTempFileNameA(folder, "pcl", 0, file);
    // The port wants the name alone: it makes the file itself.
    DeleteFileA(file);
    port_ = port == Port::kFile ? file : std::string(file) + "\\no such folder\\out";
    if (!SetPort(port_, true) || !AddDriver()) {
        return;
    }
    char processor[] = "winprint", dataType[] = "RAW";
    PRINTER_INFO_2A printer{};
    printer.pPrinterName = g_printer;
    printer.pPortName = port_.data();
    printer.pDriverName = g_driver;
    printer.pPrintProcessor = processor;
    printer.pDatatype = dataType;
    const HANDLE handle = AddPrinterA(nullptr, 2, reinterpret_cast<BYTE*>(&printer));
    if (handle != nullptr) {
        ClosePrinter(handle);
        name_ = g_printer;
    }
}

RawPrinter::~RawPrinter() {
    HANDLE handle = nullptr;
    PRINTER_DEFAULTSA all{nullptr, nullptr, PRINTER_ALL_ACCESS};
    if (!name_.empty() && OpenPrinterA(g_printer, &handle, &all)) {
        DeletePrinter(handle);
        ClosePrinter(handle);
    }
    SetPort(port_, false);
    DeleteFileA(port_.c_str());
}

std::string RawPrinter::Printed() const {
    std::ifstream file(port_, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace kx::test
