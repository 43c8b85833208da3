#include "tests/unit/recording/format_files.h"

#include <map>
#include <numeric>

#include "host/recording/scp/huffman.h"
#include "host/recording/scp/scp_file.h"

namespace kx::recording {
namespace {

using Units = std::vector<std::int32_t>;
constexpr unsigned kNumbers[kLeadCount] = {1, 2, 61, 62, 63, 64, 3, 4, 5, 6, 7, 8};  // of the leads, in SCP and MDC
constexpr std::size_t kBeat = 100, kFiducial = 40;                                   // of the reference beat, samples

// Bytes one after another, numbers with the low byte first.
struct Out {
    Octets bytes;
    Out& N(std::uint64_t value, unsigned size) {
        for (unsigned i = 0; i < size; ++i) {
            bytes.push_back(static_cast<std::uint8_t>(value >> 8 * i));
        }
        return *this;
    }
    template <class Numbers>
    Out& All(const Numbers& numbers, unsigned size) {
        for (const auto number : numbers) {
            N(static_cast<std::uint64_t>(number), size);
        }
        return *this;
    }
    Out& B(const Octets& more) { return bytes.insert(bytes.end(), more.begin(), more.end()), *this; }
    Out& T(const std::string& text) { return B({text.begin(), text.end()}); }
};

void Seal(Octets& bytes) {  // with the checksum in its first two bytes
    const unsigned sum = ScpChecksum(std::span(bytes).subspan(2));
    bytes[0] = static_cast<std::uint8_t>(sum), bytes[1] = static_cast<std::uint8_t>(sum >> 8);
}

// Two tables that switch to and fro: the first knows 0, 2 and -2, the second all else. Bits of the prefix, of a number behind it,
// whether the table changes, value, the prefix from its lowest bit on.
const std::vector<HuffmanTable> kOwnTables = {
    {{1, 0, true, 2, 0b1}, {2, 0, false, 0, 0b10}, {3, 0, false, 2, 0b000}, {3, 0, false, -2, 0b100}},
    {{1, 0, true, 1, 0b0}, {2, 0, false, 1, 0b01}, {3, 0, false, -1, 0b011}, {3, 20, false, 0, 0b111}}};

Octets Huffman(const Units& numbers, const std::vector<HuffmanTable>& tables) {
    Octets bytes;
    unsigned used = 8;
    const auto bit = [&](unsigned value) {
        if (used == 8) {
            bytes.push_back(0), used = 0;
        }
        bytes.back() = static_cast<std::uint8_t>(bytes.back() | value << (7 - used++));
    };
    const HuffmanTable* table = &tables[0];
    for (std::size_t i = 0; i < numbers.size();) {
        const std::int32_t number = numbers[i];
        const bool inFirst = tables.size() == 1 || number == 0 || std::abs(number) == 2;
        const HuffmanCode* code = &table->front();
        for (const HuffmanCode& one : *table) {
            const std::int32_t most = one.valueBits == 0 ? 0 : (1 << (one.valueBits - 1)) - 1;
            const bool holds = one.valueBits == 0 ? one.value == number : std::abs(number) <= most;
            if (!one.switchesTable && inFirst == (table == &tables[0]) && holds) {
                code = &one, ++i;
                break;
            }
        }
        for (unsigned k = 0; k < code->prefixBits; ++k) {
            bit(code->prefix >> k & 1u);
        }
        for (unsigned k = code->valueBits; k > 0; --k) {
            bit(static_cast<std::uint32_t>(number) >> (k - 1) & 1u);
        }
        if (code->switchesTable) {
            table = &tables[static_cast<std::size_t>(code->value) - 1];
        }
    }
    return bytes;
}

Octets CodeLead(const Units& units, const ScpLayout& layout) {
    Units numbers = units;
    const unsigned order = layout.differences;
    for (std::size_t i = order; i < units.size() && order > 0; ++i) {
        numbers[i] = units[i] - (order == 1 ? units[i - 1] : 2 * units[i - 1] - units[i - 2]);
    }
    if (layout.coding != ScpLayout::kPlain) {
        return Huffman(numbers, layout.coding == ScpLayout::kOwnTables ? kOwnTables : std::vector<HuffmanTable>{DefaultHuffmanTable()});
    }
    return Out().All(numbers, 2).bytes;
}

Octets Tags(const Recording& recording) {
    Out out;
    const auto tag = [&](unsigned number, const Octets& value) { out.N(number, 1).N(value.size(), 2).B(value); };
    const auto text = [&](unsigned number, const std::string& value) { tag(number, Out().T(value).N(0, 1).bytes); };
    const auto date = [](const auto& d) { return Out().N(static_cast<std::uint16_t>(d.year), 2).N(d.month, 1).N(d.day, 1).bytes; };
    const Patient& patient = recording.patient;
    const KxDateTime& time = recording.acquisitionTime;
    text(2, patient.id), text(0, patient.lastName), text(1, patient.firstName), tag(5, date(patient.birthDate));
    tag(8, {static_cast<std::uint8_t>(patient.sex)}), tag(25, date(time)), tag(26, {time.hour, time.minute, time.second});
    return tag(255, {}), out.bytes;
}

// Any beat will do that comes back.
std::int32_t Reference(std::size_t lead, std::size_t i) {
    return static_cast<std::int32_t>(200 * std::sin(0.1 * static_cast<double>(i * (lead + 1))));
}

// The samples as section 6 has them: less the beat from its 11th sample on, and thinned out before the QRS complexes and behind.
Units Stored(Units units, std::size_t lead, const ScpLayout& layout) {
    for (const std::size_t first : {100u, 300u}) {
        for (std::size_t i = 10; layout.subtractBeat && i < kBeat; ++i) {
            units[first + i - 10] -= Reference(lead, i);
        }
    }
    Units stored;
    for (std::size_t i = 0; i < units.size();) {
        const std::size_t step = i % 200 >= 120 || i + layout.decimation > units.size() ? 1 : layout.decimation;
        const auto first = units.begin() + static_cast<std::ptrdiff_t>(i);
        const std::int32_t sum = std::accumulate(first, first + static_cast<std::ptrdiff_t>(step), 0);
        stored.push_back(sum / static_cast<std::int32_t>(step)), i += step;
    }
    return stored;
}

Octets Signals(const std::vector<Octets>& leads, unsigned interval, const ScpLayout& layout) {
    Out out;
    out.N(2500, 2).N(interval, 2).N(layout.differences, 1).N(interval > 2000 ? 1 : 0, 1);
    for (const Octets& lead : leads) {
        out.N(lead.size(), 2);
    }
    for (const Octets& lead : leads) {
        out.B(lead);
    }
    return out.bytes;
}

Octets Beats(std::size_t count, const ScpLayout& layout) {
    const unsigned beats = layout.beatOnly ? 0 : 2;
    Out out;
    out.N(std::uint64_t{2} * (layout.beatOnly ? count : kBeat), 2).N(kFiducial, 2).N(beats, 2);
    for (unsigned first = 101; first < 101 + 200 * beats; first += 200) {
        out.N(layout.subtractBeat ? 0 : 1, 2).N(first, 4).N(first + kFiducial - 11, 4).N(first + kBeat - 11, 4);
    }
    for (unsigned first = 121; first < 121 + 200 * beats; first += 200) {
        out.N(first, 4).N(first + 79, 4);
    }
    return out.bytes;
}

class DicomWriter {
  public:
    explicit DicomWriter(const DicomLayout& layout) : layout_(layout) {}
    Out out;

    void Put(std::uint32_t tag, const std::string& type, std::string value) {
        if (value.size() % 2 != 0) {
            value += type == "UI" || type == "OB" ? '\0' : ' ';
        }
        Head(tag, type, value.size());
        out.T(value);
    }
    void Put(std::uint32_t tag, const Octets& number) {
        Put(tag, number.size() == 2 ? "US" : "UL", std::string(number.begin(), number.end()));
    }
    void Sequence(std::uint32_t tag, std::size_t items, const std::function<void(DicomWriter&, std::size_t)>& item) {
        Out all;
        const auto length = [&](const Out& part) { return layout_.undefinedLengths ? 0xFFFFFFFF : part.bytes.size(); };
        const auto end = [&](Out& part, unsigned element) { layout_.undefinedLengths ? part.N(0xFFFE, 2).N(element, 2).N(0, 4) : part; };
        for (std::size_t i = 0; i < items; ++i) {
            DicomWriter one(layout_);
            item(one, i);
            all.N(0xFFFE, 2).N(0xE000, 2).N(length(one.out), 4).B(one.out.bytes);
            end(all, 0xE00D);
        }
        Head(tag, "SQ", length(all));
        end(out.B(all.bytes), 0xE0DD);
    }
    void Code(std::uint32_t tag, const std::string& value, const std::string& scheme) {
        Sequence(tag, 1, [&](DicomWriter& code, std::size_t) { code.Put(0x00080100, "SH", value), code.Put(0x00080102, "SH", scheme); });
    }

  private:
    void Head(std::uint32_t tag, const std::string& type, std::uint64_t length) {
        const bool wide = type == "SQ" || type[0] == 'O', typed = layout_.explicitTypes || tag >> 16 == 2;
        out.N(tag >> 16, 2).N(tag & 0xFFFF, 2).T(typed ? type : "").N(0, typed && wide ? 2 : 0).N(length, typed && !wide ? 2 : 4);
    }

    const DicomLayout& layout_;
};

void PutGroup(DicomWriter& item, const Recording& recording, const std::vector<std::size_t>& leads, const DicomLayout& layout) {
    item.Put(0x003A0005, Out().N(leads.size(), 2).bytes);
    item.Put(0x003A0010, Out().N(recording.SampleCount(), 4).bytes);
    item.Put(0x003A001A, "DS", "500");
    item.Sequence(0x003A0200, leads.size(), [&](DicomWriter& channel, std::size_t i) {
        channel.Put(0x003A0203, "SH", kLeadNames[leads[i]] + std::string("  \0", 3));
        if (!layout.scheme.empty()) {
            channel.Code(0x003A0208, (layout.scheme == "MDC" ? "2:" : "5.6.3-9-") + std::to_string(kNumbers[leads[i]]), layout.scheme);
        }
        channel.Put(0x003A0210, "DS", std::to_string(layout.sensitivity));
        channel.Code(0x003A0211, layout.unit, "UCUM");
        channel.Put(0x003A0212, "DS", std::to_string(layout.correction));
        channel.Put(0x003A0213, "DS", std::to_string(layout.baseline));
    });
    Out data;
    for (std::size_t i = 0; i < recording.SampleCount(); ++i) {
        for (const std::size_t lead : leads) {
            const double value = recording.leads[lead][i] / (layout.unit == "mV" ? 1000 : 1);
            data.N(static_cast<std::uint64_t>(std::lround((value - layout.baseline) / (layout.sensitivity * layout.correction))),
                   layout.bits / 8);
        }
    }
    item.Put(0x54001006, "CS", std::string(layout.isSigned ? "S" : "U") + (layout.bits == 8 ? "B" : layout.bits == 16 ? "S" : "L"));
    item.Put(0x5400100A, "OB", std::string(layout.bits / 8, '\0'));  // 0 V as the value of no sample, as some writers have it
    item.Put(0x54001010, layout.bits == 8 ? "OB" : "OW", std::string(data.bytes.begin(), data.bytes.end()));
}

}  // namespace

Recording MakeLawfulRecording(std::size_t count) {
    Recording recording;
    recording.name = "lawful";
    recording.sampleRate = 500;
    recording.patient = {"A-17", "Rossi", "Zo\xC3\xA8", "", {1956, 29, 2}, -1, Sex::kFemale};
    recording.acquisitionTime = {2024, 5, 11, 7, 23, 0, 59};
    recording.filters = {50, true, false};
    std::uint32_t random = 1;
    for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
        for (std::size_t i = 0; i < count; ++i) {
            random = random * 1664525u + 1013904223u;
            const double t = static_cast<double>(i % 400) - 150, height = 400 + 100 * static_cast<double>(lead);
            const double value = height * std::exp(-t * t / 60) + 50 * std::sin(static_cast<double>(i) / 300) + (random >> 29);
            recording.leads[lead].push_back(static_cast<float>(5 * std::round(value / 5)));
        }
    }
    recording.derived = {false, false, true, true, true, true};
    DeriveLeads(recording);
    recording.derived = {};
    recording.resolutionUv.fill(2.5);
    return recording;
}

Octets EncodeScp(const Recording& recording, const ScpLayout& layout) {
    const std::size_t count = recording.SampleCount();
    Out leads, tables;
    leads.N(layout.leads.size(), 1).N(layout.subtractBeat ? 5 : 4, 1);
    std::vector<Octets> rhythm, beats;
    for (const std::size_t lead : layout.leads) {
        Units units, beat;
        for (const float value : recording.leads[lead]) {
            units.push_back(static_cast<std::int32_t>(std::lround(value / 2.5)));
        }
        for (std::size_t i = 0; i < kBeat; ++i) {
            beat.push_back(Reference(lead, i));
        }
        leads.N(1, 4).N(count, 4).N(kNumbers[lead], 1);
        rhythm.push_back(CodeLead(Stored(units, lead, layout), layout));
        beats.push_back(CodeLead(layout.beatOnly ? units : beat, layout));
    }
    std::map<unsigned, Octets> sections{{1, Tags(recording)}, {3, leads.bytes}};
    if (layout.coding == ScpLayout::kDefaultTable) {
        sections[2] = tables.N(19999, 2).bytes;
    }
    if (layout.coding == ScpLayout::kOwnTables) {
        tables.N(kOwnTables.size(), 2);
        for (const HuffmanTable& table : kOwnTables) {
            tables.N(table.size(), 2);
            for (const HuffmanCode& code : table) {
                tables.N(code.prefixBits, 1).N(code.prefixBits + code.valueBits, 1).N(code.switchesTable ? 0 : 1, 1);
                tables.N(static_cast<std::uint16_t>(code.value), 2).N(code.prefix, 4);
            }
        }
        sections[2] = tables.bytes;
    }
    sections[4] = Beats(count, layout), sections[5] = Signals(beats, 2000, layout);
    if (!layout.beatOnly) {
        sections[6] = Signals(rhythm, 2000 * layout.decimation, layout);
    }
    Out rest, pointers;
    const auto section = [&](unsigned id, const Octets& body, const std::string& name) {
        Out out;
        out.N(0, 2).N(id, 2).N(16 + body.size(), 4).N(0x1414, 2).T(name).B(body);
        if (layout.checksums) {
            Seal(out.bytes);
        }
        return out.bytes;
    };
    std::vector<unsigned> order;
    for (const auto& [id, body] : sections) {
        order.insert(layout.backwards ? order.begin() : order.end(), id);
    }
    for (const unsigned id : order) {
        pointers.N(id, 2).N(16 + sections[id].size(), 4).N(6 + 136 + rest.bytes.size() + 1, 4);
        rest.B(section(id, sections[id], std::string(6, '\0')));
    }
    pointers.bytes.resize(120);
    Out file;
    file.N(0, 2).N(6 + 136 + rest.bytes.size(), 4).B(section(0, pointers.bytes, "SCPECG")).B(rest.bytes);
    if (layout.checksums) {
        Seal(file.bytes);
    }
    return file.bytes;
}

Octets EncodeDicom(const Recording& recording, const DicomLayout& layout) {
    DicomWriter file(layout);
    if (layout.preamble) {
        file.out.bytes.resize(128);
        file.out.T("DICM");
        file.Put(0x00020010, "UI", layout.explicitTypes ? "1.2.840.10008.1.2.1" : "1.2.840.10008.1.2");
    }
    const Patient& patient = recording.patient;
    file.Put(0x00080005, "CS", "ISO_IR 192");
    file.Put(0x0008002A, "DT", "20241105230759+0100");
    file.Put(0x00100010, "PN", patient.lastName + "^" + patient.firstName);
    file.Put(0x00100020, "LO", patient.id);
    file.Put(0x00100030, "DA", "19560229");
    file.Put(0x00100040, "CS", patient.sex == Sex::kMale ? "M" : "F");
    file.Sequence(0x00290010, 1, [](DicomWriter& item, std::size_t) { item.Put(0x00290011, "LO", "a maker's own"); });
    file.Sequence(0x54000100, layout.groups, [&](DicomWriter& item, std::size_t group) {
        std::vector<std::size_t> leads;
        for (std::size_t i = group; i < layout.leads.size(); i += layout.groups) {
            leads.push_back(layout.leads[i]);
        }
        PutGroup(item, recording, leads, layout);
    });
    return file.out.bytes;
}

}  // namespace kx::recording
