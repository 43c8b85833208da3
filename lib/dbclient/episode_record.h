// A median beat: its samples, its measurements and what the interpretation engine says about it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "include/kxdialogs.h"
#include "lib/dbclient/interpretation_result.h"
#include "lib/dbclient/measurement_set.h"

namespace kx {

// KxEpisodeRecord.leadConfiguration
enum : std::uint32_t {
    kTwelveLeadConfiguration = 0,
    kFourLeadConfiguration = 1,   // lead codes 12 to 14, and 15 when there are four leads
    kThreeLeadConfiguration = 3,  // lead codes 17 to 19
    kNoLeadConfiguration = 4
};

inline constexpr std::uint32_t kLongestEpisodeSeconds = 65000;

// A KxEpisodeRecord with its operations; no data added. One made here owns its samples. On a host's record
// the operations read and write in place and free nothing; Deserialize and the constructors alone make or
// replace the sample area and are for records made here.
//
// A lead is read and written only when a slot names it and its samples lie wholly within the sample area
// of storedLeads x samplesPerLead samples; any other lead is absent. An area that totalSize does not cover is
// none: which of the two is right cannot be told, so all leads are absent.
struct EpisodeRecord : KxEpisodeRecord {
    // Configuration 0 takes 12 leads, 1 takes 3 or 4, 3 takes up to 3; any other count gives no leads and any
    // other configuration is stored as 4 without leads. Samples and measurements start cleared. When leads,
    // samples per lead, rate or resolution is 0, or memory is short, the record has no samples and
    // samplesPerLead 0.
    EpisodeRecord(std::uint32_t configuration, std::uint32_t leadCount, std::uint32_t samplesEachLead,
                  std::uint32_t samplesPerSecond, std::uint32_t nanovoltsPerUnit) noexcept;
    // From a serialized block: see Deserialize. A refused block gives a record without samples.
    EpisodeRecord(const void* block, std::size_t size) noexcept;
    ~EpisodeRecord();
    EpisodeRecord(const EpisodeRecord&) = delete;
    EpisodeRecord& operator=(const EpisodeRecord&) = delete;

    static EpisodeRecord& Of(KxEpisodeRecord& episode) { return static_cast<EpisodeRecord&>(episode); }
    static const EpisodeRecord& Of(const KxEpisodeRecord& episode) {
        return static_cast<const EpisodeRecord&>(episode);
    }

    // ---- storage
    std::uint32_t SerializedSize() const { return totalSize; }
    // Recomputes the checksum and writes the fixed part and the samples, little-endian, with no address in
    // it. False, and nothing written, when there are no samples, totalSize does not cover them, there is no
    // buffer or it is smaller than totalSize.
    bool Serialize(void* buffer, std::size_t size);
    // Empty when there are no samples or no memory.
    std::vector<std::uint8_t> Serialize();
    // Takes a serialized episode of which `size` bytes may be read. A block whose first word is below 3176,
    // or that is shorter than 3176 bytes, is not taken: false, and the record is as it was. Else the fixed
    // part is taken, and the samples when the format version is 5, there are samples, the block holds them
    // all and their checksum is right; otherwise false, and the record is left without samples (totalSize,
    // samplesPerLead and durationSeconds 0).
    bool Deserialize(const void* block, std::size_t size);
    // The same for a block whose first word is trusted to be no more than the bytes that may be read.
    bool Deserialize(const void* block);

    // ---- samples
    std::uint32_t SamplesPerLead() const { return samplesPerLead; }
    // Whether the record announces more samples than its totalSize covers.
    bool AnnouncesTooMuch() const;
    std::uint32_t SampleRate() const { return sampleRate; }      // samples per second
    std::uint32_t ResolutionNv() const { return resolutionNv; }  // nanovolts per sample unit
    // The samplesPerLead samples of a lead, null when it is absent. Code 16 (-aVR) gives aVR's, not inverted.
    std::int16_t* Samples(std::uint32_t leadCode);
    const std::int16_t* Samples(std::uint32_t leadCode) const;
    // 0 for an absent lead or an index beyond its samples. Code 16 gives minus the aVR sample.
    std::int32_t Sample(std::uint32_t leadCode, std::uint32_t index) const;
    // In microvolts, rounded to nearest.
    std::int32_t SampleMicrovolts(std::uint32_t leadCode, std::uint32_t index) const;
    // Clears the lead, then copies count samples. False, and nothing changed, when count exceeds
    // samplesPerLead, the lead is absent (code 16 is never stored) or no samples are given.
    bool SetLeadSamples(std::uint32_t leadCode, const std::int16_t* samplesToCopy, std::uint32_t count);
    // III, aVR, aVL and aVF from I and II, divisions truncating, in 16 bits. False, and nothing changed, when
    // one of the six leads is absent.
    bool DeriveLimbLeads();

    // ---- time
    std::uint32_t DurationSeconds() const { return durationSeconds; }
    // Also the measurements' episodeTime.
    void SetEndTimeMs(std::uint32_t ms);

    // ---- results
    MeasurementSet& Measurements() { return MeasurementSet::Of(measurements); }
    const MeasurementSet& Measurements() const { return MeasurementSet::Of(measurements); }
    InterpretationResult& Interpretation() { return static_cast<InterpretationResult&>(interpretation); }
    const InterpretationResult& Interpretation() const {
        return static_cast<const InterpretationResult&>(interpretation);
    }

    // ---- what the suite's other programs do, and no pane of this library

    // Subtracts offset (sample units) from every sample of the lead, in 16 bits.
    void ShiftLead(std::uint32_t leadCode, std::int32_t offset);
    // Zeroes all samples and clears the measurements.
    void ClearSamples();

    // One second more, up to 65000; restarts at 1 while the state is 0.
    void AddSecond();
    std::uint32_t EndTimeMs() const { return endTimeMs; }
    void SetState(std::uint32_t value) { state = value; }

    // The five global fiducial points (ms), into all 15 lead blocks.
    void SetGlobalFiducials(std::uint16_t pOn, std::uint16_t pOff, std::uint16_t qrsOn, std::uint16_t qrsOff,
                            std::uint16_t tOff);
    // The global QRS onset alone, into all 15 lead blocks.
    void SetQrsOn(std::uint16_t ms);

  private:
    std::span<std::int16_t> SampleArea() const;
    void LayOutLeads(std::uint32_t leadCount);
    bool Allocate(std::uint64_t sampleCount) noexcept;
    bool TakeSamples(const std::uint8_t* block, std::size_t size);
    void DropSamples();
};

static_assert(sizeof(void*) != 4 || sizeof(EpisodeRecord) == KX_EPISODE_FIXED_SIZE);

}  // namespace kx
