// Huffman codes of SCP-ECG: section 2 (EN 1064, 5.5 and annex C).
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace kx::recording {

// One code: a prefix of bits, first to last from the lowest bit of `prefix`, and behind it value bits.
struct HuffmanCode {
    unsigned prefixBits = 0;     // 1 to 32
    unsigned valueBits = 0;      // 0 to 32: a two's complement number in place of `value`
    bool switchesTable = false;  // `value` is the number of the table for what follows, from 1
    std::int32_t value = 0;
    std::uint32_t prefix = 0;
};

using HuffmanTable = std::vector<HuffmanCode>;

// The table of annex C: the differences -8 to 8, then numbers of 8 and of 16 bits.
const HuffmanTable& DefaultHuffmanTable();

// Tables as section 2 holds them; empty when the samples are not coded. Throws ReadFailure for tables that
// are cut.
std::vector<HuffmanTable> ReadHuffmanTables(std::span<const std::uint8_t> section);

class HuffmanDecoder {
  public:
    // Throws ReadFailure when no code is there, two codes of a table cannot be told apart or a table that
    // does not exist is switched to.
    explicit HuffmanDecoder(const std::vector<HuffmanTable>& tables);

    // `count` numbers from the bytes, high bits first, beginning with the first table. Throws ReadFailure
    // when the bytes end before or hold no code.
    std::vector<std::int32_t> Decode(std::span<const std::uint8_t> bytes, std::size_t count) const;

  private:
    struct Node {
        std::int32_t next[2] = {-1, -1};
        std::int32_t code = -1;  // index in codes_
    };
    void Add(std::size_t table, const HuffmanCode& code, std::size_t tables);

    std::vector<HuffmanCode> codes_;
    std::vector<Node> nodes_;  // of all tables; table k begins at node k
};

}  // namespace kx::recording
