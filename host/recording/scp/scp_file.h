// An SCP-ECG file (EN 1064, ISO 11073-91064) as its sections.
#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <vector>

namespace kx::recording {

// A record of the whole file: its length in bytes 2 to 5, and section 0 behind.
bool IsScp(std::span<const std::uint8_t> bytes);

// CRC-CCITT (polynomial x^16 + x^12 + x^5 + 1, start 0xFFFF) of the bytes.
std::uint16_t ScpChecksum(std::span<const std::uint8_t> bytes);

class ScpFile {
  public:
    // Finds the sections by the pointers of section 0, in any order. Throws ReadFailure when the file is cut,
    // a pointer leads outside of it or to another section, and when the bytes are damaged: neither the file's
    // checksum nor those of all sections are right. Keeps a view of the bytes.
    explicit ScpFile(std::span<const std::uint8_t> bytes);

    bool Has(unsigned section) const { return sections_.contains(section); }
    // What stands behind the 16 bytes of the section's own header; throws ReadFailure when there is no such
    // section.
    std::span<const std::uint8_t> Section(unsigned section) const;

    // What a reader of the measurements should know of the checksums.
    const std::vector<std::string>& Remarks() const { return remarks_; }

  private:
    void ReadPointers(std::span<const std::uint8_t> bytes);
    void CheckSums(std::span<const std::uint8_t> bytes);

    std::map<unsigned, std::span<const std::uint8_t>> sections_;  // with their headers
    std::vector<std::string> remarks_;
};

}  // namespace kx::recording
