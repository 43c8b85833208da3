// The annotation store's serialized form: a header, the entries, and the lead beats of slots 17, 18 and 19.
// Everything is little-endian and stands in the block as it does in memory.
#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <new>

#include "lib/annotation_store.h"

namespace kx {

namespace {

static_assert(std::endian::native == std::endian::little);

struct BlockHeader {
    std::uint32_t totalSize;
    std::uint32_t count;
    std::uint32_t sampleRate;
    std::uint32_t resolutionNv;
    std::uint32_t version;
};
static_assert(sizeof(BlockHeader) == 20);

constexpr std::uint32_t kBlockVersion = 0xFF000002;
// Every entry takes this much, whether or not the store holds lead beats.
constexpr std::size_t kEntrySize = sizeof(KxAnnotation) + kChannelSlots * sizeof(LeadBeat);
static_assert(kEntrySize == 68);
constexpr std::size_t kMostEntries =
    (std::numeric_limits<std::uint32_t>::max() - sizeof(BlockHeader)) / kEntrySize;

constexpr char kSource[] = "..\\lib\\system";
constexpr std::uint32_t kTooSmallLine = 512;
constexpr std::uint32_t kNoEntriesLine = 518;
constexpr std::uint32_t kVersionLine = 524;
constexpr std::uint32_t kBrokenBlockLine = 506;
constexpr char kTooSmall[] = "ann too small";
constexpr char kInvalid[] = "an invalid";
constexpr char kWrongVersion[] = "invalid version";

// A block of which only `size` bytes may be read.
class BlockView {
  public:
    BlockView(const void* block, std::size_t size) {
        if (block == nullptr || size < sizeof header_) {
            return;
        }
        std::memcpy(&header_, block, sizeof header_);
        if (header_.count <= (size - sizeof header_) / kEntrySize) {
            entries_ = static_cast<const std::uint8_t*>(block) + sizeof header_;
        }
    }

    bool IsWhole() const { return entries_ != nullptr; }
    const BlockHeader& Header() const { return header_; }
    void CopyEntries(KxAnnotation* to, std::uint32_t count) const {
        std::memcpy(to, entries_, count * sizeof(KxAnnotation));
    }
    void CopyBeats(std::uint32_t channel, LeadBeat* to, std::uint32_t count) const {
        std::memcpy(
            to, entries_ + header_.count * (sizeof(KxAnnotation) + std::size_t{channel} * sizeof(LeadBeat)),
            count * sizeof(LeadBeat));
    }

  private:
    BlockHeader header_{};
    const std::uint8_t* entries_ = nullptr;
};

}  // namespace

std::size_t AnnotationStore::SerializedSize() const {
    return sizeof(BlockHeader) + count_ * kEntrySize;
}

std::unique_ptr<std::uint8_t[]> AnnotationStore::Serialize() const {
    if (count_ == 0 || entries_ == nullptr || count_ > kMostEntries) {
        return nullptr;
    }
    std::unique_ptr<std::uint8_t[]> block(new (std::nothrow) std::uint8_t[SerializedSize()]());
    if (block == nullptr) {
        return nullptr;
    }
    const BlockHeader header{static_cast<std::uint32_t>(SerializedSize()), count_, sampleRate_, resolutionNv_,
                             kBlockVersion};
    std::uint8_t* end = block.get();
    const auto write = [&end](const void* data, std::size_t size) {
        if (data != nullptr) {
            std::memcpy(end, data, size);
        }
        end += size;  // zeros where there is nothing
    };
    write(&header, sizeof header);
    write(entries_.get(), count_ * sizeof(KxAnnotation));
    for (std::uint32_t channel = 0; channel < kChannelSlots; ++channel) {
        write(leadBeats_[kFirstChannelSlot + channel].get(), count_ * sizeof(LeadBeat));
    }
    return block;
}

bool AnnotationStore::ReadEntries(const void* block, std::size_t size, Reporter& log) {
    const BlockView view(block, size);
    if (!view.IsWhole()) {
        log.LOGOEMERROR(kSource, kBrokenBlockLine, kInvalid);
        return false;
    }
    const BlockHeader& header = view.Header();
    sampleRate_ = header.sampleRate;
    resolutionNv_ = header.resolutionNv;
    modified_ = 0;
    if (header.count > capacity_) {
        log.LOGOEMERROR(kSource, kTooSmallLine, kTooSmall);
    }
    if (entries_ == nullptr || capacity_ == 0) {
        log.LOGOEMERROR(kSource, kNoEntriesLine, kInvalid);
        return false;
    }
    if (header.version != kBlockVersion) {
        log.LOGOEMERROR(kSource, kVersionLine, kWrongVersion);
        return false;
    }
    const std::uint32_t held = count_;
    count_ = std::min(header.count, capacity_);
    view.CopyEntries(entries_.get(), count_);
    for (std::uint32_t i = held; i < count_; ++i) {
        ZeroBeats(i);  // what an array holds behind its entries is left from others, or never written
    }
    return true;
}

bool AnnotationStore::Read(const void* block, std::size_t size, Reporter& log) {
    if (!ReadEntries(block, size, log)) {
        return false;
    }
    const BlockView view(block, size);
    for (std::uint32_t channel = 0; channel < kChannelSlots; ++channel) {
        if (LeadBeat* beats = leadBeats_[kFirstChannelSlot + channel].get()) {
            view.CopyBeats(channel, beats, count_);
        }
    }
    return true;
}

bool AnnotationStore::Rebuild(const void* block, std::size_t size, bool twelveLead) {
    const BlockView view(block, size);
    if (!view.IsWhole()) {
        return false;
    }
    const BlockHeader& header = view.Header();
    sampleRate_ = header.sampleRate;
    resolutionNv_ = header.resolutionNv;
    modified_ = 0;
    entries_.reset();
    for (LeadBeats& beats : leadBeats_) {
        beats.reset();
    }
    count_ = 0;
    capacity_ = room_ = fixedRoom_ = header.count;
    if (header.count == 0 || header.version != kBlockVersion) {
        return false;
    }
    twelveLead ? Allocate(header.count, 0, KX_STANDARD_LEADS)
               : Allocate(header.count, kFirstChannelSlot, kChannelSlots);
    if (entries_ == nullptr) {
        return false;
    }
    count_ = header.count;
    view.CopyEntries(entries_.get(), count_);
    for (std::uint32_t channel = 0; channel < kChannelSlots; ++channel) {
        if (LeadBeat* beats = leadBeats_[kFirstChannelSlot + channel].get()) {
            view.CopyBeats(channel, beats, count_);
        }
    }
    return true;
}

}  // namespace kx
