#include "host/clients/archive_client.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <filesystem>

#include "host/windows/text_conversion.h"
#include "lib/dbclient/test_block.h"
#include "lib/dbclient/test_record.h"

namespace kxhost {
namespace {

template <std::size_t N>
void SetText(char (&field)[N], const std::string& text) {
    std::memcpy(field, text.data(), std::min(text.size(), N - 1));
}

template <std::size_t N>
std::string TextOf(const char (&field)[N]) {
    return {field, strnlen(field, N)};
}

// What the worklist and the questions say of a save.
std::wstring SavedByWords(const kx::ArchivedTest& test) {
    KxDateTime time;
    std::memcpy(&time, test.savedAt, sizeof time);
    wchar_t when[48];
    std::swprintf(when, std::size(when), L" il %02d/%02d/%04d alle %02d:%02d", time.day, time.month,
                  time.year, time.hour, time.minute);
    return FromRecordText(TextOf(test.savedBy)) + when;
}

}  // namespace

ArchiveClient::ArchiveClient(const std::string& file)
    : module_(L"kxdb.dll"), failure_(module_.FailureText()) {
    if (!module_.IsLoaded()) {
        return;
    }
    if (!file.empty()) {
        SetEnvironmentVariableW(L"KX_ARCHIVE", std::filesystem::absolute(PathFromUtf8(file)).c_str());
    }
    const auto opens = module_.Find<std::uint32_t(KX_CALL*)()>("CONFIG");
    add_ = module_.Find<TestFunction>("TEST_ADD");
    update_ = module_.Find<TestFunction>("TEST_UPDATE");
    delete_ = module_.Find<TestFunction>("TEST_DELETE");
    fetch_ = module_.Find<TestFunction>("TEST_FETCH");
    list_ = module_.Find<ListFunction>("TEST_LIST");
    if (opens == nullptr || add_ == nullptr || update_ == nullptr || delete_ == nullptr ||
        fetch_ == nullptr || list_ == nullptr) {
        failure_ = L"kxdb.dll non tiene un archivio";
    } else if (opens() == 0) {
        failure_ = L"l'archivio non si apre";
    }
}

bool ArchiveClient::IsAvailable() const {
    return failure_.empty();
}

std::string ArchiveClient::UserName() {
    std::array<wchar_t, 64> name{};
    const DWORD length = GetEnvironmentVariableW(L"USERNAME", name.data(), static_cast<DWORD>(name.size()));
    return length > 0 && length < name.size() ? ToRecordText(std::wstring(name.data(), length))
                                              : std::string("?");
}

ArchiveClient::Result ArchiveClient::Call(TestFunction function, kx::ArchivedTest& test,
                                          ArchivedKey& key) const {
    if (!IsAvailable()) {
        return {kx::kArchiveNotDone, failure_};
    }
    test.size = sizeof test;
    test.id = key.id;
    test.revision = key.revision;
    const auto answer = static_cast<kx::ArchiveAnswer>(function(&test));
    if (answer == kx::kArchiveDone) {
        key = {test.id, test.revision};
    }
    if (answer == kx::kArchiveChanged) {
        return {answer, SavedByWords(test)};
    }
    if (answer == kx::kArchiveAbsent) {
        return {answer, L"l'esame non è più nell'archivio"};
    }
    return {answer, FromRecordText(TextOf(test.problem))};
}

ArchiveClient::Result ArchiveClient::Save(const kx::TestRecord& test, const std::string& source,
                                          ArchivedKey& key) const {
    std::vector<std::uint8_t> block = kx::WriteTestBlock(test);
    kx::ArchivedTest stored{};
    stored.block = block.data();
    stored.blockSize = static_cast<std::uint32_t>(block.size());
    SetText(stored.source, source);
    SetText(stored.savedBy, UserName());
    return Call(key.id == 0 ? add_ : update_, stored, key);
}

ArchiveClient::Result ArchiveClient::Fetch(ArchivedKey& key, kx::TestRecord& test,
                                           std::string& source) const {
    kx::ArchivedTest stored{};
    std::vector<std::uint8_t> block;
    Result result = Call(fetch_, stored, key);
    // Twice at the most: somebody may save a larger one in between.
    for (int attempt = 0; result.answer == kx::kArchiveTooLarge && attempt < 2; ++attempt) {
        block.resize(stored.blockSize);
        stored.block = block.data();
        stored.blockCapacity = static_cast<std::uint32_t>(block.size());
        result = Call(fetch_, stored, key);
    }
    if (result.answer != kx::kArchiveDone) {
        return result;
    }
    source = TextOf(stored.source);
    if (kx::ReadTestBlock(std::span(block).first(stored.blockSize), test) != kx::TestBlockFault::kNone) {
        return {kx::kArchiveNotDone, L"l'esame nell'archivio non è intero"};
    }
    return result;
}

ArchiveClient::Result ArchiveClient::Delete(const ArchivedKey& key) const {
    kx::ArchivedTest stored{};
    SetText(stored.savedBy, UserName());
    ArchivedKey deleted = key;
    return Call(delete_, stored, deleted);
}

std::uint32_t ArchiveClient::Count(const kx::ArchiveFilter& filter) const {
    return IsAvailable() ? list_(&filter, kx::kArchiveNewestFirst, 0, nullptr, 0) : 0;
}

std::vector<ArchivedLine> ArchiveClient::List(const kx::ArchiveFilter& filter, kx::ArchiveOrder order,
                                              std::uint32_t first, std::uint32_t capacity) const {
    std::vector<ArchivedLine> lines;
    if (!IsAvailable()) {
        return lines;
    }
    std::vector<KxTestListEntry> entries(capacity);
    entries.resize(list_(&filter, order, first, entries.data(), capacity));
    for (const KxTestListEntry& entry : entries) {
        lines.push_back({{entry.reserved0[0], entry.reserved0[1]},
                         entry.acquisitionTime,
                         TextOf(entry.sortName),
                         TextOf(entry.patientId),
                         entry.stateFlags,
                         entry.testType});
    }
    return lines;
}

}  // namespace kxhost
