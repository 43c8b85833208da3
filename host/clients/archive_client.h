// kxdb.dll as this workstation uses it: the archive of tests.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/clients/suite_module.h"
#include "include/kxdialogs.h"
#include "lib/modules/archive_records.h"

namespace kx {
struct TestRecord;
}

namespace kxhost {

// Which test of the archive a session works on; id 0: none yet.
struct ArchivedKey {
    std::uint32_t id = 0;
    std::uint32_t revision = 0;
};

// One line of a list.
struct ArchivedLine {
    ArchivedKey key;
    KxDateTime time{};
    std::string name;  // "last, first middle", Windows-1252 like all texts here
    std::string patientId;
    std::uint32_t stateFlags = 0;
    std::uint32_t testType = 0;
};

class ArchiveClient {
  public:
    // file: the archive, UTF-8; empty: the one that is set for the user.
    explicit ArchiveClient(const std::string& file = {});

    // Whether there is an archive to work with; why not (Italian, one line).
    bool IsAvailable() const;
    const std::wstring& FailureText() const { return failure_; }

    struct Result {
        kx::ArchiveAnswer answer = kx::kArchiveNotDone;
        std::wstring text;  // why it was not done, or who has saved since and when
    };
    // Adds the test when the key has no id, else saves it over the revision that the key names. The key then
    // names what stands in the archive. source: where the recording came from, UTF-8.
    Result Save(const kx::TestRecord& test, const std::string& source, ArchivedKey& key) const;
    // Fills a new, empty test; the key then names its revision.
    Result Fetch(ArchivedKey& key, kx::TestRecord& test, std::string& source) const;
    Result Delete(const ArchivedKey& key) const;

    std::uint32_t Count(const kx::ArchiveFilter& filter) const;
    std::vector<ArchivedLine> List(const kx::ArchiveFilter& filter, kx::ArchiveOrder order,
                                   std::uint32_t first, std::uint32_t capacity) const;

    // Who works here, as the archive is told: the name that the system knows the user by.
    static std::string UserName();

  private:
    using TestFunction = std::uint32_t(KX_CALL*)(kx::ArchivedTest*);
    using ListFunction = std::uint32_t(KX_CALL*)(const kx::ArchiveFilter*, std::uint32_t, std::uint32_t,
                                                 KxTestListEntry*, std::uint32_t);

    Result Call(TestFunction function, kx::ArchivedTest& test, ArchivedKey& key) const;

    SuiteModule module_;
    std::wstring failure_;
    TestFunction add_ = nullptr;
    TestFunction update_ = nullptr;
    TestFunction delete_ = nullptr;
    TestFunction fetch_ = nullptr;
    ListFunction list_ = nullptr;
};

}  // namespace kxhost
