#include "host/recording/scp/scp_file.h"

#include "host/recording/byte_reader.h"

namespace kx::recording {

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::size_t kFileHead = 6;  // checksum and length
constexpr std::size_t kSectionHead = 16;
constexpr std::size_t kPointer = 10;
constexpr unsigned kLastSection = 18;  // of version 3; others are a maker's own

// A checksum at the start of the bytes, over all that follow it.
enum class Sum { kRight, kWrong, kAbsent };

Sum Check(Bytes bytes) {
    const unsigned stored = ByteReader(bytes, "the checksum").U16();
    const unsigned sum = ScpChecksum(bytes.subspan(2));
    // Some makers store it with the high byte first; those that compute none leave it zero.
    const bool right = stored == sum || (stored >> 8 | (stored & 0xFFu) << 8) == sum;
    return right ? Sum::kRight : stored == 0 ? Sum::kAbsent : Sum::kWrong;
}

struct SectionHead {
    unsigned id;
    std::uint32_t length;
};

SectionHead HeadOf(Bytes section) {
    ByteReader reader(section, "a section");
    reader.U16();
    const unsigned id = reader.U16();
    return {id, reader.U32()};
}

}  // namespace

std::uint16_t ScpChecksum(Bytes bytes) {
    std::uint16_t sum = 0xFFFF;
    for (const std::uint8_t byte : bytes) {
        sum = static_cast<std::uint16_t>(sum ^ byte << 8);
        for (int bit = 0; bit < 8; ++bit) {
            sum = static_cast<std::uint16_t>((sum & 0x8000) != 0 ? sum << 1 ^ 0x1021 : sum << 1);
        }
    }
    return sum;
}

bool IsScp(Bytes bytes) {
    if (bytes.size() < kFileHead + kSectionHead) {
        return false;
    }
    ByteReader reader(bytes, "the file");
    reader.U16();
    const std::uint32_t length = reader.U32();
    const SectionHead head = HeadOf(bytes.subspan(kFileHead));
    const bool named = AsText(bytes.subspan(kFileHead + 10, 6)) == "SCPECG";
    // Files before version 1.3 carry no name: the lengths must then agree with one another.
    return head.id == 0 && head.length >= kSectionHead + kPointer && head.length < length &&
           (named || length == bytes.size());
}

ScpFile::ScpFile(Bytes bytes) {
    if (!IsScp(bytes)) {
        Refuse("it does not begin as an SCP-ECG record does");
    }
    ByteReader reader(bytes, "the file");
    reader.U16();
    const std::uint32_t length = reader.U32();
    if (length > bytes.size()) {
        Refuse("it is cut: " + std::to_string(bytes.size()) + " of " + std::to_string(length) +
               " bytes are there");
    }
    bytes = bytes.first(length);
    ReadPointers(bytes);
    CheckSums(bytes);
}

void ScpFile::ReadPointers(Bytes bytes) {
    // Section 0 is shorter than the file, as IsScp has seen.
    ByteReader all(bytes.subspan(kFileHead), "section 0");
    sections_[0] = all.Take(HeadOf(bytes.subspan(kFileHead)).length);
    ByteReader reader(sections_[0].subspan(kSectionHead), "section 0");
    while (reader.Left() >= kPointer) {
        const unsigned id = reader.U16();
        const std::uint32_t length = reader.U32();
        const std::uint32_t index = reader.U32();  // of its first byte, counted from 1
        if (id == 0 || id > kLastSection || length <= kSectionHead) {
            continue;  // not in this file
        }
        const std::string name = "section " + std::to_string(id);
        if (sections_.contains(id)) {
            Refuse(name + " is there twice");
        }
        if (index < 1 || index > bytes.size() || length > bytes.size() - (index - 1)) {
            Refuse(name + " is said to lie outside the file");
        }
        const Bytes section = bytes.subspan(index - 1, length);
        const SectionHead head = HeadOf(section);
        // Some count the byte that makes the length even here and not there.
        if (head.id != id || (head.length != length && head.length + 1 != length)) {
            Refuse(name + " is not where section 0 says");
        }
        sections_[id] = section.first(head.length);
    }
}

void ScpFile::CheckSums(Bytes bytes) {
    const Sum file = Check(bytes);
    if (file == Sum::kRight) {
        return;
    }
    bool absent = false;
    for (const auto& [id, section] : sections_) {
        const Sum sum = Check(section);
        if (sum == Sum::kWrong) {
            Refuse("the checksum of section " + std::to_string(id) + " is wrong: the file is damaged");
        }
        absent = absent || sum == Sum::kAbsent;
    }
    if (absent && file == Sum::kWrong) {
        Refuse("its checksum is wrong: the file is damaged");
    }
    remarks_.emplace_back(absent ? "the file has no checksums"
                                 : "the file's checksum is not right, those of its parts are");
}

Bytes ScpFile::Section(unsigned section) const {
    const auto found = sections_.find(section);
    if (found == sections_.end()) {
        Refuse("section " + std::to_string(section) + " is missing");
    }
    return found->second.subspan(kSectionHead);
}

}  // namespace kx::recording
