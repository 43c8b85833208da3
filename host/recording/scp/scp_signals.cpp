#include "host/recording/scp/scp_signals.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "host/recording/byte_reader.h"
#include "host/recording/scp/huffman.h"
#include "host/recording/scp/scp_beats.h"

namespace kx::recording {

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::size_t kMostLeads = 64;
constexpr std::int64_t kLargestUnits = 1 << 24;  // beyond it a float does not tell units apart

// One lead's place in section 3. Samples are counted from 1.
struct LeadSpan {
    std::uint32_t first = 0, last = 0;
    unsigned number = 0;

    std::uint32_t Count() const { return last - first + 1; }
};

struct LeadTable {
    std::vector<LeadSpan> leads;
    bool beatSubtracted = false;
};

LeadTable ReadLeads(Bytes section) {
    ByteReader reader(section, "section 3");
    LeadTable table;
    const std::size_t leads = reader.U8();
    if (leads > kMostLeads) {
        Refuse("section 3 has " + std::to_string(leads) + " leads");
    }
    table.leads.resize(leads);
    table.beatSubtracted = (reader.U8() & 1u) != 0;
    for (LeadSpan& lead : table.leads) {
        lead.first = reader.U32();
        lead.last = reader.U32();
        lead.number = reader.U8();
        if (lead.last < lead.first || lead.last - lead.first >= kMostSamples) {
            Refuse("section 3 gives lead " + std::to_string(lead.number) + " the samples " +
                   std::to_string(lead.first) + " to " + std::to_string(lead.last));
        }
    }
    return table;
}

// How section 5 or 6 begins.
struct SignalHead {
    unsigned nanovolts = 0;     // a unit
    unsigned microseconds = 0;  // between samples
    unsigned differences = 0;   // 0, 1 or 2
    bool bimodal = false;       // section 6 only
    std::vector<Bytes> leads;   // each lead's samples as they are coded
};

SignalHead ReadHead(Bytes section, const std::string& name, std::size_t leads) {
    ByteReader reader(section, name);
    SignalHead head;
    head.nanovolts = reader.U16();
    head.microseconds = reader.U16();
    head.differences = reader.U8();
    head.bimodal = reader.U8() != 0;
    if (head.nanovolts == 0 || head.microseconds == 0) {
        Refuse(name + " does not say what a unit or the sampling interval is");
    }
    if (head.differences > 2) {
        Refuse(name + " has samples as differences of order " + std::to_string(head.differences));
    }
    std::vector<std::size_t> lengths(leads);
    for (std::size_t& length : lengths) {
        length = reader.U16();
    }
    for (const std::size_t length : lengths) {
        head.leads.push_back(reader.Take(length));
    }
    return head;
}

void UndoDifferences(std::vector<std::int32_t>& samples, unsigned order) {
    for (std::size_t i = order; i < samples.size() && order > 0; ++i) {
        const std::int64_t before = samples[i - 1];
        const std::int64_t sum = samples[i] + (order == 1 ? before : 2 * before - samples[i - 2]);
        if (sum > kLargestUnits || sum < -kLargestUnits) {
            Refuse("the differences of the samples add up to no ECG");
        }
        samples[i] = static_cast<std::int32_t>(sum);
    }
}

class SignalReader {
  public:
    SignalReader(const ScpFile& file, std::vector<std::string>& remarks)
        : file_(file), remarks_(remarks), table_(ReadLeads(file.Section(3))) {
        if (file.Has(2)) {
            const auto tables = ReadHuffmanTables(file.Section(2));
            if (!tables.empty()) {
                decoder_.emplace(tables);
            }
        }
        // The beats are read strictly only where the rhythm cannot be had without them.
        needsBeats_ = !file.Has(6) || table_.beatSubtracted || IsBimodal(file.Section(6));
        try {
            ReadBeats();
        } catch (const ReadFailure&) {
            if (needsBeats_) {
                throw;
            }
            reference_.reset();
        }
    }

    std::vector<SignalGroup> Read() {
        if (!file_.Has(6) && !reference_) {
            Refuse("it holds neither a rhythm (section 6) nor a reference beat (section 5)");
        }
        if (file_.Has(6)) {
            ReadRhythm();
        }
        if (reference_) {
            try {
                ReadReferenceBeat();
            } catch (const ReadFailure&) {
                if (needsBeats_) {
                    throw;
                }
            }
        }
        return std::move(groups_);
    }

  private:
    static bool IsBimodal(Bytes section) {
        constexpr std::size_t kFlag = 5;
        return section.size() > kFlag && section[kFlag] != 0;
    }

    void ReadBeats() {
        if (file_.Has(4)) {
            beats_ = ReadScpBeats(file_.Section(4), table_.beatSubtracted);
        }
        if (file_.Has(5)) {
            reference_ = ReadHead(file_.Section(5), "section 5", table_.leads.size());
        }
    }

    std::vector<std::int32_t> Samples(const SignalHead& head, std::size_t lead, std::size_t count,
                                      const std::string& section) const {
        const Bytes coded = head.leads[lead];
        std::vector<std::int32_t> samples;
        if (decoder_) {
            samples = decoder_->Decode(coded, count);
        } else {
            if (coded.size() / 2 < count) {
                Refuse(section + " holds " + std::to_string(coded.size() / 2) + " of the " +
                       std::to_string(count) + " samples of lead " +
                       std::to_string(table_.leads[lead].number));
            }
            ByteReader reader(coded, section);
            while (samples.size() < count) {
                samples.push_back(reader.I16());
            }
        }
        UndoDifferences(samples, head.differences);
        return samples;
    }

    // The number of samples of the reference beat.
    std::size_t ReferenceCount(const SignalHead& head) const {
        if (beats_.referenceMs > 0) {
            const double count = beats_.referenceMs * 1000.0 / head.microseconds;
            return static_cast<std::size_t>(std::lround(count));
        }
        if (decoder_) {
            Refuse("section 4 does not say how long the reference beat is");
        }
        return head.leads.empty() ? 0 : head.leads.front().size() / 2;
    }

    void ReadRhythm() {
        SignalHead head = ReadHead(file_.Section(6), "section 6", table_.leads.size());
        const unsigned factor = Decimation(head);
        for (std::size_t i = 0; i < table_.leads.size(); ++i) {
            const LeadSpan& lead = table_.leads[i];
            const auto name = LeadOfNumber(lead.number);
            if (!name) {
                continue;
            }
            const SampleRange range{lead.first, lead.last};
            const std::size_t stored =
                factor > 1 ? DecimatedCount(range, beats_.protectedAreas, factor) : lead.Count();
            const auto samples = Samples(head, i, stored, "section 6");
            std::vector<float> values = Scaled(samples, head.nanovolts);
            if (factor > 1) {
                values = Interpolated(values, range, beats_.protectedAreas, factor);
            }
            if (table_.beatSubtracted) {
                AddReference(i, range, head.microseconds / factor, values);
            }
            // With the beat added the samples are sums of two units, between means they are no units.
            const bool inUnits =
                factor == 1 && (!table_.beatSubtracted || reference_->nanovolts == head.nanovolts);
            GroupOf(lead, head.microseconds / factor)
                .channels.push_back({*name, inUnits ? head.nanovolts / 1000.0 : 0, std::move(values), {}});
        }
    }

    // How many samples stand for one outside the protected areas; 1: all are there.
    unsigned Decimation(const SignalHead& head) {
        if (!head.bimodal) {
            return 1;
        }
        if (!reference_) {
            Refuse(
                "section 6 leaves samples out (bimodal compression), but section 5 does not say of which "
                "rate");
        }
        const unsigned factor = head.microseconds / reference_->microseconds;
        if (factor == 0 || factor * reference_->microseconds != head.microseconds) {
            Refuse("the sampling intervals of sections 5 and 6 do not agree");
        }
        if (factor > 1) {
            remarks_.push_back("between the QRS complexes the file holds every " + std::to_string(factor) +
                               "th sample only");
        }
        return factor;
    }

    static std::vector<float> Scaled(const std::vector<std::int32_t>& samples, unsigned nanovolts) {
        std::vector<float> values;
        values.reserve(samples.size());
        for (const std::int32_t sample : samples) {
            values.push_back(static_cast<float>(sample * (nanovolts / 1000.0)));
        }
        return values;
    }

    void AddReference(std::size_t lead, const SampleRange& range, unsigned microseconds,
                      std::vector<float>& values) {
        if (!reference_ || beats_.fiducial == 0) {
            Refuse(
                "section 3 says that a reference beat was subtracted, but sections 4 and 5 do not hold it");
        }
        if (reference_->microseconds != microseconds) {
            Refuse("the sampling intervals of sections 5 and 6 do not agree");
        }
        const auto beat = Scaled(Samples(*reference_, lead, ReferenceCount(*reference_), "section 5"),
                                 reference_->nanovolts);
        AddReferenceBeat(beats_, beat, range, values);
    }

    void ReadReferenceBeat() {
        const std::size_t count = ReferenceCount(*reference_);
        SignalGroup group;
        group.kind = SignalKind::kRepresentativeBeat;
        group.sampleRate = 1e6 / reference_->microseconds;
        for (std::size_t i = 0; i < table_.leads.size(); ++i) {
            const auto name = LeadOfNumber(table_.leads[i].number);
            if (name && !reference_->leads[i].empty()) {
                group.channels.push_back(
                    {*name,
                     reference_->nanovolts / 1000.0,
                     Scaled(Samples(*reference_, i, count, "section 5"), reference_->nanovolts),
                     {}});
            }
        }
        groups_.push_back(std::move(group));
    }

    SignalGroup& GroupOf(const LeadSpan& lead, unsigned microseconds) {
        const double startMs = lead.first * (microseconds / 1000.0);
        for (SignalGroup& group : groups_) {
            if (group.startMs == startMs && group.channels.front().microvolts.size() == lead.Count()) {
                return group;
            }
        }
        SignalGroup group;
        group.sampleRate = 1e6 / microseconds;
        group.startMs = startMs;
        return groups_.emplace_back(std::move(group));
    }

    const ScpFile& file_;
    std::vector<std::string>& remarks_;
    LeadTable table_;
    std::optional<HuffmanDecoder> decoder_;
    ScpBeats beats_;
    std::optional<SignalHead> reference_;
    bool needsBeats_ = false;
    std::vector<SignalGroup> groups_;
};

}  // namespace

std::vector<SignalGroup> ReadScpSignals(const ScpFile& file, std::vector<std::string>& remarks) {
    return SignalReader(file, remarks).Read();
}

}  // namespace kx::recording
