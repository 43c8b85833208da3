// The sub-objects of a test record: made, replaced and freed here, each as what it was made.
#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include "lib/dbclient/sub_records.h"
#include "lib/dbclient/test_record.h"

namespace kx {

namespace {

// Frees what stands in a slot as what it was made: a Made is the slot's type or derived from it.
template <class Made, class T>
void Free(T*& slot) {
    delete static_cast<Made*>(slot);
    slot = nullptr;
}

void FreeBytes(void*& slot) {
    delete[] static_cast<std::uint8_t*>(slot);
    slot = nullptr;
}

// The old bytes go before the new ones are made. They stay where no new ones are given.
bool ReplaceBytes(void*& slot, const void* data, std::size_t size) {
    if (data == nullptr || size == 0) {
        return false;
    }
    FreeBytes(slot);
    auto* copy = new (std::nothrow) std::uint8_t[size];
    if (copy == nullptr) {
        return false;
    }
    std::memcpy(copy, data, size);
    slot = copy;
    return true;
}

// The objects of an array, from the last to the first.
template <class T, std::size_t N>
void FreeAll(T* (&slots)[N], std::uint32_t& count) {
    for (count = std::min<std::uint32_t>(count, N); count > 0;) {
        Free<T>(slots[--count]);
    }
}

}  // namespace

TestRecord::TestRecord() noexcept : KxTestRecord{} {
    testType = KX_TEST_NEW;
    history = new (std::nothrow) History;
    currentStage = NewSubRecord<KxStressStage>().release();
}

// Nothing here makes `blocks`: whoever fills that array keeps it.
TestRecord::~TestRecord() {
    FreeBytes(buffer7584);
    Free<History>(history);
    Free<KxSpirometry>(spirometry);
    Free<KxHolterSummary>(holterSummary);
    Free<KxHolterData>(holterData);
    FreeAll(rawBlocks, rawBlockCount);
    Free<KxPressureReading>(pressureSummary);
    FreeAll(pressures, pressureCount);
    Free<KxStressStage>(currentStage);
    FreeAll(stages, stageCount);
    Free<ValueSeries>(series9796);
    for (KxValueSeries*& one : series) {
        Free<ValueSeries>(one);
    }
    ReleaseEpisodes();
    FreeBytes(object7604);
    FreeBytes(object7600);
    DestroyAnnotations();
    FreeBytes(ecg);
}

bool TestRecord::SetEcg(const void* data, std::size_t size) {
    return ReplaceBytes(ecg, data, size);
}

bool TestRecord::SetBuffer7584(const void* data, std::size_t size) {
    return ReplaceBytes(buffer7584, data, size);
}

bool TestRecord::SetObject7600(const std::array<std::uint8_t, 12>& object) {
    return ReplaceBytes(object7600, object.data(), object.size());
}

bool TestRecord::SetObject7604(const std::array<std::uint8_t, 24>& object) {
    return ReplaceBytes(object7604, object.data(), object.size());
}

bool TestRecord::SetSeries(int code, std::unique_ptr<ValueSeries> newSeries) {
    if (!IsSeriesCode(code)) {
        return false;
    }
    Replace(series[code - kFirstSeriesCode], std::move(newSeries));
    return true;
}

bool TestRecord::AddRawBlock(const KxRawBlock& block) {
    return AppendTo(rawBlocks, rawBlockCount,
                    std::unique_ptr<KxRawBlock>(new (std::nothrow) KxRawBlock(block)));
}

}  // namespace kx
