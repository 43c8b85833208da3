#include "host/recording/dicom/data_set.h"

#include <algorithm>
#include <cstdio>

#include "host/recording/byte_reader.h"
#include "host/recording/record_text.h"
#include "host/recording/text_scanner.h"

namespace kx::recording {

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::size_t kPreamble = 128;
constexpr std::string_view kMagic = "DICM";
constexpr std::uint32_t kUndefined = 0xFFFFFFFF;
constexpr int kDeepest = 24;  // sequences in one another
constexpr DicomTag kItem = 0xFFFEE000, kItemEnd = 0xFFFEE00D, kSequenceEnd = 0xFFFEE0DD;
constexpr DicomTag kTransferSyntax = 0x00020010;

constexpr std::string_view kImplicit = "1.2.840.10008.1.2";
constexpr std::string_view kExplicit = "1.2.840.10008.1.2.1";

// Sequences, which elements without a stated type are told by.
constexpr DicomTag kSequences[] = {0x54000100, 0x003A0200, 0x003A0208, 0x003A0211, 0x0040B020, 0x0040A043};
// The groups that a waveform object's patient, device, channels, annotations and samples stand in.
constexpr unsigned kGroups[] = {0x0002, 0x0008, 0x0010, 0x0018, 0x003A, 0x0040, 0x0070, 0x5400};

template <typename Row, std::size_t N>
bool Contains(const Row (&rows)[N], Row wanted) {
    return std::find(std::begin(rows), std::end(rows), wanted) != std::end(rows);
}

std::string NameOf(DicomTag tag) {
    char name[16];
    std::snprintf(name, sizeof name, "(%04X,%04X)", static_cast<unsigned>(tag >> 16),
                  static_cast<unsigned>(tag & 0xFFFF));
    return name;
}

bool IsType(std::string_view type) {
    return std::all_of(type.begin(), type.end(), [](char c) { return c >= 'A' && c <= 'Z'; });
}

// Types whose length has 4 bytes behind 2 reserved ones.
bool HasLongLength(std::string_view type) {
    constexpr std::string_view kTypes[] = {"OB", "OD", "OF", "OL", "OV", "OW", "SQ",
                                           "SV", "UC", "UN", "UR", "UT", "UV"};
    return Contains(kTypes, type);
}

class Parser {
  public:
    explicit Parser(Bytes bytes) : bytes_(bytes) {}

    DicomDataSet Read() {
        if (bytes_.size() >= kPreamble + kMagic.size() &&
            AsText(bytes_.subspan(kPreamble, kMagic.size())) == kMagic) {
            at_ = kPreamble + kMagic.size();
        }
        DicomDataSet all;
        explicit_ = true;
        while (at_ < bytes_.size() && PeekGroup() == 2) {
            ReadElement(all, bytes_.size(), 0);
        }
        ChooseSyntax(all.Text(kTransferSyntax));
        while (!OnlyZerosAreLeft()) {
            ReadElement(all, bytes_.size(), 0);
        }
        return all;
    }

  private:
    // Files are padded at their end by some.
    bool OnlyZerosAreLeft() const {
        return std::all_of(bytes_.begin() + static_cast<std::ptrdiff_t>(at_), bytes_.end(),
                           [](std::uint8_t byte) { return byte == 0; });
    }

    void ChooseSyntax(const std::string& syntax) {
        if (syntax.empty()) {
            // Without group 2: the third word of an element is a type or half of a length.
            explicit_ = at_ + 6 <= bytes_.size() && IsType(AsText(bytes_.subspan(at_ + 4, 2)));
        } else if (syntax == kImplicit || syntax == kExplicit) {
            explicit_ = syntax == kExplicit;
        } else {
            Refuse("its transfer syntax " + Quoted(syntax) +
                   " is not read (implicit and explicit little endian are)");
        }
    }

    unsigned PeekGroup() const {
        return at_ + 2 <= bytes_.size() ? static_cast<unsigned>(bytes_[at_] | bytes_[at_ + 1] << 8) : 0;
    }

    Bytes Take(std::size_t count, std::size_t end, DicomTag tag) {
        if (end < at_ || end - at_ < count) {
            Refuse(tag == 0 ? "it is cut within its elements"
                            : "element " + NameOf(tag) + " says " + std::to_string(count) + " bytes, " +
                                  std::to_string(end < at_ ? 0 : end - at_) + " are there");
        }
        const Bytes taken = bytes_.subspan(at_, count);
        at_ += count;
        return taken;
    }

    DicomTag TakeTag(std::size_t end) {
        ByteReader reader(Take(4, end, 0), "a tag");
        const DicomTag group = reader.U16();
        return group << 16 | reader.U16();
    }

    std::uint32_t TakeU32(std::size_t end) { return ByteReader(Take(4, end, 0), "a length").U32(); }

    // An element, or the end of an item: false then.
    bool ReadElement(DicomDataSet& set, std::size_t end, int depth) {
        const DicomTag tag = TakeTag(end);
        if (tag == kItemEnd) {
            TakeU32(end);
            return false;
        }
        std::string type;
        std::uint32_t length = 0;
        if (explicit_) {
            type = std::string(AsText(Take(2, end, 0)));
            if (!IsType(type)) {
                Refuse("element " + NameOf(tag) + " has no type");
            }
            if (HasLongLength(type)) {
                Take(2, end, 0);
                length = TakeU32(end);
            } else {
                length = ByteReader(Take(2, end, 0), "a length").U16();
            }
        } else {
            length = TakeU32(end);
        }
        DicomElement element;
        element.tag = tag;
        const bool untyped = !explicit_ || type == "UN";
        if (type == "SQ" || length == kUndefined || (untyped && Contains(kSequences, tag))) {
            // What is stored as of unknown type is implicit within (PS3.5, 6.2.2).
            const bool outside = explicit_;
            explicit_ = explicit_ && type != "UN";
            ReadSequence(element, length, end, depth + 1, type == "OB" || type == "OW");
            explicit_ = outside;
        } else {
            element.bytes = Take(length, end, tag);
        }
        if (Contains(kGroups, static_cast<unsigned>(tag >> 16))) {
            set.Add(std::move(element));
        }
        return true;
    }

    // The items of fragmented values (an icon, say) hold bytes and no elements; they are passed over.
    void ReadSequence(DicomElement& sequence, std::uint32_t length, std::size_t end, int depth,
                      bool fragments) {
        if (depth > kDeepest) {
            Refuse("its sequences are too deep in one another");
        }
        const std::size_t sequenceEnd = EndOf(length, end, sequence.tag);
        while (at_ < sequenceEnd) {
            const DicomTag tag = TakeTag(sequenceEnd);
            const std::uint32_t itemLength = TakeU32(sequenceEnd);
            if (tag == kSequenceEnd) {
                return;
            }
            if (tag != kItem) {
                Refuse("sequence " + NameOf(sequence.tag) + " holds " + NameOf(tag) +
                       " in the place of an item");
            }
            const std::size_t itemEnd = EndOf(itemLength, sequenceEnd, sequence.tag);
            DicomDataSet& item = sequence.items.emplace_back();
            while (!fragments && at_ < itemEnd && ReadElement(item, itemEnd, depth)) {
            }
            if (itemLength != kUndefined) {
                at_ = itemEnd;
            }
        }
        if (length == kUndefined) {
            Refuse("sequence " + NameOf(sequence.tag) + " does not end");
        }
    }

    std::size_t EndOf(std::uint32_t length, std::size_t end, DicomTag tag) {
        if (length == kUndefined) {
            return end;
        }
        if (length > end - at_) {
            Refuse("sequence " + NameOf(tag) + " is longer than what holds it");
        }
        return at_ + length;
    }

    Bytes bytes_;
    std::size_t at_ = 0;
    bool explicit_ = true;
};

}  // namespace

const DicomElement* DicomDataSet::Find(DicomTag tag) const {
    const auto found = std::find_if(elements_.begin(), elements_.end(),
                                    [tag](const DicomElement& element) { return element.tag == tag; });
    return found == elements_.end() ? nullptr : &*found;
}

const std::vector<DicomDataSet>& DicomDataSet::Items(DicomTag tag) const {
    static const std::vector<DicomDataSet> kNone;
    const DicomElement* element = Find(tag);
    return element == nullptr ? kNone : element->items;
}

Bytes DicomDataSet::Bytes(DicomTag tag) const {
    const DicomElement* element = Find(tag);
    return element == nullptr ? std::span<const std::uint8_t>() : element->bytes;
}

std::string DicomDataSet::Text(DicomTag tag) const {
    const std::string_view all = AsText(Bytes(tag));
    return TextOfField(all.substr(0, all.find('\\')));
}

std::optional<std::uint32_t> DicomDataSet::Number(DicomTag tag) const {
    const auto bytes = Bytes(tag);
    ByteReader reader(bytes, NameOf(tag));
    switch (bytes.size()) {
        case 2:
            return reader.U16();
        case 4:
            return reader.U32();
        default:
            return std::nullopt;
    }
}

std::optional<double> DicomDataSet::Decimal(DicomTag tag) const {
    const std::string text = Text(tag);
    if (text.empty()) {
        return std::nullopt;
    }
    const auto value = WholeNumber<double>(text);
    if (!value || !(*value > -1e30 && *value < 1e30)) {
        Refuse("element " + NameOf(tag) + " holds " + Quoted(text) + " where a number should stand");
    }
    return value;
}

void DicomDataSet::Add(DicomElement element) {
    elements_.push_back(std::move(element));
}

bool IsDicom(std::span<const std::uint8_t> bytes) {
    if (bytes.size() >= kPreamble + kMagic.size() &&
        AsText(bytes.subspan(kPreamble, kMagic.size())) == kMagic) {
        return true;
    }
    // Bare data sets begin with a low element of group 2 or 8: its number, then a type or a short length.
    if (bytes.size() < 16 || bytes[1] != 0 || (bytes[0] != 2 && bytes[0] != 8) || bytes[3] != 0) {
        return false;
    }
    return IsType(AsText(bytes.subspan(4, 2))) || (bytes[5] == 0 && bytes[6] == 0 && bytes[7] == 0);
}

DicomDataSet ReadDicomElements(std::span<const std::uint8_t> bytes) {
    return Parser(bytes).Read();
}

}  // namespace kx::recording
