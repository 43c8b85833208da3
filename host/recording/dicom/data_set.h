// A DICOM file as its elements (DICOM PS3.5 and PS3.10).
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace kx::recording {

// Group number in the high 16 bits, element number in the low.
using DicomTag = std::uint32_t;

struct DicomElement;

// Elements in file order; only those whose group a waveform object needs are kept.
class DicomDataSet {
  public:
    // Null when there is none.
    const DicomElement* Find(DicomTag tag) const;
    // The items of a sequence; empty when there is none.
    const std::vector<DicomDataSet>& Items(DicomTag tag) const;
    // The bytes of a value; empty when there is none.
    std::span<const std::uint8_t> Bytes(DicomTag tag) const;
    // The first of a text's values, as UTF-8 without the padding; empty when there is none.
    std::string Text(DicomTag tag) const;
    // A whole number that is stored in 2 or 4 bytes.
    std::optional<std::uint32_t> Number(DicomTag tag) const;
    // A number that is stored as text (DS, IS); nothing when there is none. Throws ReadFailure for a text
    // that is no number.
    std::optional<double> Decimal(DicomTag tag) const;

    void Add(DicomElement element);

  private:
    std::vector<DicomElement> elements_;
};

struct DicomElement {
    DicomTag tag = 0;
    std::span<const std::uint8_t> bytes;
    std::vector<DicomDataSet> items;
};

// A file with the 128 bytes before "DICM", or without them, beginning with an element of group 2 or 8.
bool IsDicom(std::span<const std::uint8_t> bytes);

// The elements of a file, group 2 included; values are views of the bytes. Transfer syntaxes: implicit and
// explicit little endian; sequences and items of stated and of undefined length. Throws ReadFailure for
// another syntax and where the file is cut or its elements do not fit into one another.
DicomDataSet ReadDicomElements(std::span<const std::uint8_t> bytes);

}  // namespace kx::recording
