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
        body_ = static_cast<const std::uint8_t*>(block) + sizeof header_;
        whole_ = header_.count <= (size - sizeof header_) / kEntrySize;
    }

    bool HasHeader() const { return body_ != nullptr; }
    const BlockHeader& Header() const { return header_; }
    bool IsVersion() const { return header_.version == kBlockVersion; }
    // All the entries that the header announces, with their beats.
    bool IsWhole() const { return whole_; }
    void CopyEntries(AnnotationStore& to) const {
        std::memcpy(to.entries, body_, to.count * sizeof(KxAnnotation));
    }
    void CopyBeats(AnnotationStore& to) const {
        const std::uint8_t* from = body_ + header_.count * sizeof(KxAnnotation);
        for (LeadBeat* beats : to.ChannelBeats()) {
            if (beats != nullptr) {
                std::memcpy(beats, from, to.count * sizeof(LeadBeat));
            }
            from += header_.count * sizeof(LeadBeat);
        }
    }

  private:
    BlockHeader header_{};
    const std::uint8_t* body_ = nullptr;
    bool whole_ = false;
};

}  // namespace

std::size_t AnnotationStore::SerializedSize() const {
    return sizeof(BlockHeader) + count * kEntrySize;
}

std::unique_ptr<std::uint8_t[]> AnnotationStore::Serialize() const {
    if (count == 0 || entries == nullptr || count > kMostEntries) {
        return nullptr;
    }
    std::unique_ptr<std::uint8_t[]> block(new (std::nothrow) std::uint8_t[SerializedSize()]());
    if (block == nullptr) {
        return nullptr;
    }
    const BlockHeader header{static_cast<std::uint32_t>(SerializedSize()), count, sampleRate, resolutionNv,
                             kBlockVersion};
    std::uint8_t* end = block.get();
    const auto write = [&end](const void* data, std::size_t size) {
        if (data != nullptr) {
            std::memcpy(end, data, size);
        }
        end += size;  // zeros where there is nothing
    };
    write(&header, sizeof header);
    write(entries, count * sizeof(KxAnnotation));
    for (const LeadBeat* beats : ChannelBeats()) {
        write(beats, count * sizeof(LeadBeat));
    }
    return block;
}

// A block of another version may count its bytes otherwise, so the version is asked before the length.
bool AnnotationStore::ReadEntries(const void* block, std::size_t size, Reporter& log) {
    const BlockView view(block, size);
    const auto refuse = [&log](std::uint32_t line, const char* text) {
        log.LOGOEMERROR(kSource, line, text);
        return false;
    };
    if (!view.HasHeader() || (view.IsVersion() && !view.IsWhole())) {
        return refuse(kBrokenBlockLine, kInvalid);
    }
    const BlockHeader& header = view.Header();
    sampleRate = header.sampleRate;
    resolutionNv = header.resolutionNv;
    modified = 0;
    if (header.count > capacity) {
        log.LOGOEMERROR(kSource, kTooSmallLine, kTooSmall);
    }
    if (entries == nullptr || capacity == 0) {
        return refuse(kNoEntriesLine, kInvalid);
    }
    if (!view.IsVersion()) {
        return refuse(kVersionLine, kWrongVersion);
    }
    const std::uint32_t held = count;
    count = std::min(header.count, capacity);
    view.CopyEntries(*this);
    for (std::uint32_t i = held; i < count; ++i) {
        ZeroBeats(i);  // what an array holds behind its entries is left from others, or never written
    }
    return true;
}

bool AnnotationStore::Read(const void* block, std::size_t size, Reporter& log) {
    if (!ReadEntries(block, size, log)) {
        return false;
    }
    BlockView(block, size).CopyBeats(*this);
    return true;
}

bool AnnotationStore::Rebuild(const void* block, std::size_t size, bool twelveLead) {
    const BlockView view(block, size);
    if (!view.HasHeader() || (view.IsVersion() && !view.IsWhole())) {
        return false;
    }
    const BlockHeader& header = view.Header();
    sampleRate = header.sampleRate;
    resolutionNv = header.resolutionNv;
    modified = 0;
    Discard();
    capacity = room_ = fixedRoom_ = header.count;
    if (header.count == 0 || !view.IsVersion()) {
        return false;
    }
    twelveLead ? Allocate(header.count, 0, KX_STANDARD_LEADS)
               : Allocate(header.count, kFirstChannelSlot, kChannelSlots);
    if (entries == nullptr) {
        return false;
    }
    count = header.count;
    view.CopyEntries(*this);
    view.CopyBeats(*this);
    return true;
}

}  // namespace kx
