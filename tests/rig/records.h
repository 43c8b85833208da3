// The records that the panes are opened on.
#pragma once

#include <memory>

#include "include/kxdialogs.h"
#include "lib/dbclient/test_record.h"

namespace kx::test {

// A resting ECG as the library makes it: one beat of 1000 samples in 1000 ms, so that a sample is a
// millisecond, with waves, markers and measurements of its own for every lead; an annotation store, a signal,
// an original report.
std::unique_ptr<TestRecord> NewRecord();

// What a host in another language keeps: the record and an episode, written byte by byte at their documented places;
// each ends where unreadable memory begins.
class ForeignRecord {
  public:
    // An episode of 3176 bytes without samples, texts or sub-objects.
    ForeignRecord();
    // The bytes of a record with its first beat; its sub-objects are the model's, which outlives this.
    explicit ForeignRecord(const TestRecord& model);
    ~ForeignRecord();
    ForeignRecord(const ForeignRecord&) = delete;
    ForeignRecord& operator=(const ForeignRecord&) = delete;

    // Little-endian, of so many bytes at an offset of the record, of the episode, of its measurements, or of the
    // block of a lead in them.
    void Store(std::size_t offset, long value, int bytes);
    void StoreEpisode(std::size_t offset, long value, int bytes);
    void StoreGlobal(std::size_t offset, int value);
    void StoreLead(std::size_t lead, std::size_t offset, int value);

    // The host frees it: every later access is an access violation.
    void Revoke();

    KxTestRecord& Record() { return *reinterpret_cast<KxTestRecord*>(record_.bytes); }
    KxEpisodeRecord& Episode() { return *reinterpret_cast<KxEpisodeRecord*>(episode_.bytes); }

  private:
    // Ends where a page is missing.
    struct Fenced {
        explicit Fenced(std::size_t bytesSize);
        ~Fenced();
        std::size_t size;
        std::uint8_t* bytes;
    };

    Fenced record_;
    Fenced episode_;
    Fenced samples_;
};

// A record whose every field between its pointers and counts is 0xFF: texts without end, times that are none,
// a beat of no rate, markers at 65535.
std::unique_ptr<TestRecord> AbsurdRecord();

}  // namespace kx::test
