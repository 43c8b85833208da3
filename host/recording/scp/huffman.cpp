#include "host/recording/scp/huffman.h"

#include "host/recording/byte_reader.h"

namespace kx::recording {

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr unsigned kDefaultTables = 19999;  // in place of a number of tables
constexpr unsigned kMostBits = 32;
constexpr std::size_t kMostCodes = 20'000;  // far more than a table of differences needs

// The bits of `value`, of which there are `count`, in reverse order.
constexpr std::uint32_t Reversed(std::uint32_t value, unsigned count) {
    std::uint32_t reversed = 0;
    for (unsigned bit = 0; bit < count; ++bit) {
        reversed = reversed << 1 | (value >> bit & 1u);
    }
    return reversed;
}

HuffmanTable MakeDefaultTable() {
    constexpr std::int32_t kLargest = 8;
    HuffmanTable table;
    const auto add = [&](unsigned bits, unsigned valueBits, std::int32_t value, std::uint32_t prefix) {
        table.push_back({bits, valueBits, false, value, Reversed(prefix, bits)});
    };
    add(1, 0, 0, 0);
    // 100, 101 for 1 and -1, 1100, 1101 for 2 and -2, and so on.
    for (std::int32_t value = 1; value <= kLargest; ++value) {
        const auto bits = static_cast<unsigned>(value + 2);
        const std::uint32_t ones = (1u << bits) - 4;
        add(bits, 0, value, ones);
        add(bits, 0, -value, ones + 1);
    }
    add(10, 8, 0, 0x3FE);
    add(10, 16, 0, 0x3FF);
    return table;
}

class BitReader {
  public:
    explicit BitReader(Bytes bytes) : bytes_(bytes) {}

    unsigned Bit() {
        if (at_ / 8 >= bytes_.size()) {
            Refuse("the coded samples end too early");
        }
        const unsigned bit = bytes_[at_ / 8] >> (7 - at_ % 8) & 1u;
        ++at_;
        return bit;
    }

    // Two's complement.
    std::int32_t Number(unsigned bits) {
        std::uint32_t value = 0;
        for (unsigned i = 0; i < bits; ++i) {
            value = value << 1 | Bit();
        }
        const bool negative = bits < kMostBits && (value >> (bits - 1) & 1u) != 0;
        return static_cast<std::int32_t>(negative ? value | ~0u << bits : value);
    }

  private:
    Bytes bytes_;
    std::size_t at_ = 0;
};

HuffmanCode ReadCode(ByteReader& reader) {
    HuffmanCode code;
    code.prefixBits = reader.U8();
    const unsigned allBits = reader.U8();
    code.switchesTable = reader.U8() == 0;
    code.value = reader.I16();
    code.prefix = reader.U32();
    if (code.prefixBits < 1 || code.prefixBits > kMostBits || allBits < code.prefixBits ||
        allBits - code.prefixBits > kMostBits) {
        Refuse("section 2 has a code of " + std::to_string(code.prefixBits) + " in " +
               std::to_string(allBits) + " bits");
    }
    code.valueBits = code.switchesTable ? 0 : allBits - code.prefixBits;
    return code;
}

}  // namespace

const HuffmanTable& DefaultHuffmanTable() {
    static const HuffmanTable table = MakeDefaultTable();
    return table;
}

std::vector<HuffmanTable> ReadHuffmanTables(Bytes section) {
    ByteReader reader(section, "section 2");
    const unsigned count = reader.U16();
    if (count == kDefaultTables) {
        return {DefaultHuffmanTable()};
    }
    std::vector<HuffmanTable> tables;
    std::size_t codes = 0;
    for (unsigned i = 0; i < count; ++i) {
        HuffmanTable& table = tables.emplace_back();
        const unsigned size = reader.U16();
        codes += size;
        if (codes > kMostCodes) {
            Refuse("section 2 has more than " + std::to_string(kMostCodes) + " codes");
        }
        for (unsigned k = 0; k < size; ++k) {
            table.push_back(ReadCode(reader));
        }
    }
    return tables;
}

HuffmanDecoder::HuffmanDecoder(const std::vector<HuffmanTable>& tables) : nodes_(tables.size()) {
    for (std::size_t i = 0; i < tables.size(); ++i) {
        for (const HuffmanCode& code : tables[i]) {
            Add(i, code, tables.size());
        }
    }
    if (codes_.empty()) {
        Refuse("section 2 has no codes");
    }
}

void HuffmanDecoder::Add(std::size_t table, const HuffmanCode& code, std::size_t tables) {
    const std::string name = "table " + std::to_string(table + 1) + " of section 2";
    if (code.switchesTable && (code.value < 1 || static_cast<std::size_t>(code.value) > tables)) {
        Refuse(name + " switches to table " + std::to_string(code.value) + ", which is not there");
    }
    std::size_t node = table;
    for (unsigned bit = 0; bit < code.prefixBits; ++bit) {
        if (nodes_[node].code >= 0) {
            Refuse(name + " has a code that begins another");
        }
        const unsigned branch = code.prefix >> bit & 1u;
        if (nodes_[node].next[branch] < 0) {
            nodes_[node].next[branch] = static_cast<std::int32_t>(nodes_.size());
            nodes_.emplace_back();
        }
        node = static_cast<std::size_t>(nodes_[node].next[branch]);
    }
    if (nodes_[node].code >= 0 || nodes_[node].next[0] >= 0 || nodes_[node].next[1] >= 0) {
        Refuse(name + " has a code that begins another");
    }
    nodes_[node].code = static_cast<std::int32_t>(codes_.size());
    codes_.push_back(code);
}

std::vector<std::int32_t> HuffmanDecoder::Decode(Bytes bytes, std::size_t count) const {
    BitReader bits(bytes);
    std::vector<std::int32_t> numbers;
    // A number takes a bit or more.
    numbers.reserve(count <= bytes.size() * 8 ? count : 0);
    std::size_t table = 0;
    while (numbers.size() < count) {
        auto node = static_cast<std::int32_t>(table);
        while (node >= 0 && nodes_[static_cast<std::size_t>(node)].code < 0) {
            node = nodes_[static_cast<std::size_t>(node)].next[bits.Bit()];
        }
        if (node < 0) {
            Refuse("the samples hold a code that section 2 does not have");
        }
        const HuffmanCode& code =
            codes_[static_cast<std::size_t>(nodes_[static_cast<std::size_t>(node)].code)];
        if (code.switchesTable) {
            table = static_cast<std::size_t>(code.value) - 1;
        } else {
            numbers.push_back(code.valueBits > 0 ? bits.Number(code.valueBits) : code.value);
        }
    }
    return numbers;
}

}  // namespace kx::recording
