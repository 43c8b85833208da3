#include "dialogs/statements/statement_files.h"

#include <cstring>

#include "include/kxdialogs.h"

namespace kx {
namespace {

struct StatementFile {
    std::uint32_t testType;
    const char* name;
    bool dictionaryOnly;
};

constexpr StatementFile kFiles[] = {
    {KX_TEST_STRESS, "\\stress.htm", false},
    {KX_TEST_RESTING, "\\resting.htm", false},
    {KX_TEST_HIGH_RESOLUTION, "\\hires.htm", true},
    {KX_TEST_HOLTER, "\\holter.htm", false},
    {KX_TEST_ABPM, "\\abpm.htm", false},
    {KX_TEST_SPIROMETRY, "\\spiro.htm", false},
};

}  // namespace

const char* StatementFileName(std::uint32_t testType, StatementUse use) {
    for (const StatementFile& file : kFiles) {
        if (file.testType == testType && (!file.dictionaryOnly || use == StatementUse::kDictionary)) {
            return file.name;
        }
    }
    return nullptr;
}

bool StatementFilePath(std::string_view modulePath, std::string_view fileName, char* path, std::size_t size) {
    if (size > 0) {
        path[0] = '\0';
    }
    const std::size_t directory = modulePath.rfind('\\');
    if (directory == std::string_view::npos || directory + fileName.size() >= size) {
        return false;
    }
    std::memcpy(path, modulePath.data(), directory);
    std::memcpy(path + directory, fileName.data(), fileName.size());
    path[directory + fileName.size()] = '\0';
    return true;
}

}  // namespace kx
