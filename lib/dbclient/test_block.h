// A whole test as one block of bytes: how tests are kept and exchanged. Portable.
//
// Little-endian words of 32 bits: the magic "KXTB", the version 1, the size of the block, the CRC-32 of what
// follows, then chunks of a tag, a size and as many bytes. A reader passes over tags that it does not know.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace kx {

struct TestRecord;

// All fields and sub-objects of the test: episodes, both annotation stores, history, recorded signal, value
// series, stages, pressures, raw blocks, Holter and spirometry records. `buffer7584` and `blocks` are left
// out: their sizes are their makers'. A signal counts as its header tells (280 bytes that begin with leads,
// samples a lead, rate, resolution); one whose header makes no sense is left out. Throws std::bad_alloc.
std::vector<std::uint8_t> WriteTestBlock(const TestRecord& test);

enum class TestBlockFault { kNone, kNotATest, kNewer, kDamaged, kNoMemory };

// Fills a new, empty test. Anything but kNone: the block was refused, and the test may hold a part of it.
TestBlockFault ReadTestBlock(std::span<const std::uint8_t> block, TestRecord& test);

}  // namespace kx
