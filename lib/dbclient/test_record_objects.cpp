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

template <class Made, class T>
void Replace(T*& slot, std::unique_ptr<Made> object) {
    Free<Made>(slot);
    slot = object.release();
}

// The objects of an array, from the last to the first.
template <class T, std::size_t N>
void FreeAll(T* (&slots)[N], std::uint32_t& count) {
    for (count = std::min<std::uint32_t>(count, N); count > 0;) {
        Free<T>(slots[--count]);
    }
}

template <class T, std::size_t N>
bool AppendTo(T* (&slots)[N], std::uint32_t& count, std::unique_ptr<T> object) {
    if (count >= N || object == nullptr) {
        return false;
    }
    slots[count++] = object.release();
    return true;
}

template <class T, std::size_t N>
T* At(T* const (&slots)[N], std::uint32_t count, int index) {
    const bool held = index >= 0 && static_cast<std::uint32_t>(index) < std::min<std::uint32_t>(count, N);
    return held ? slots[index] : nullptr;
}

// The slot of a series, null for a code that has none.
template <class Slots>
auto* SeriesSlot(Slots& slots, int code) {
    return code < kFirstSeriesCode || code > kLastSeriesCode ? nullptr : &slots[code - kFirstSeriesCode];
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

KxValueSeries* TestRecord::Series(int code) const {
    const auto* slot = SeriesSlot(series, code);
    return slot != nullptr ? Understood(*slot) : nullptr;
}

bool TestRecord::SetSeries(int code, std::unique_ptr<ValueSeries> newSeries) {
    auto* slot = SeriesSlot(series, code);
    if (slot != nullptr) {
        Replace(*slot, std::move(newSeries));
    }
    return slot != nullptr;
}

void TestRecord::SetSeries9796(std::unique_ptr<ValueSeries> newSeries) {
    Replace(series9796, std::move(newSeries));
}

std::uint32_t TestRecord::StageCount() const {
    return std::min(stageCount, kStageCapacity);
}

KxStressStage* TestRecord::Stage(int index) const {
    return Understood(index == -1 ? currentStage : At(stages, stageCount, index));
}

bool TestRecord::AddStage(std::unique_ptr<KxStressStage> stage) {
    return AppendTo(stages, stageCount, std::move(stage));
}

void TestRecord::SetCurrentStage(std::unique_ptr<KxStressStage> stage) {
    Replace(currentStage, std::move(stage));
}

std::uint32_t TestRecord::PressureCount() const {
    return std::min(pressureCount, kPressureCapacity);
}

KxPressureReading* TestRecord::Pressure(int index) const {
    return Understood(index == -1 ? pressureSummary : At(pressures, pressureCount, index));
}

bool TestRecord::AddPressure(std::unique_ptr<KxPressureReading> reading) {
    return AppendTo(pressures, pressureCount, std::move(reading));
}

void TestRecord::SetPressureSummary(std::unique_ptr<KxPressureReading> reading) {
    Replace(pressureSummary, std::move(reading));
}

std::uint32_t TestRecord::RawBlockCount() const {
    return std::min(rawBlockCount, kRawBlockCapacity);
}

const KxRawBlock* TestRecord::RawBlock(std::uint32_t index) const {
    return index < RawBlockCount() ? rawBlocks[index] : nullptr;
}

bool TestRecord::AddRawBlock(const KxRawBlock& block) {
    return AppendTo(rawBlocks, rawBlockCount,
                    std::unique_ptr<KxRawBlock>(new (std::nothrow) KxRawBlock(block)));
}

KxHolterSummary* TestRecord::HolterSummary() const {
    return Understood(holterSummary);
}

void TestRecord::SetHolterSummary(std::unique_ptr<KxHolterSummary> summary) {
    Replace(holterSummary, std::move(summary));
}

KxHolterData* TestRecord::HolterData() const {
    return Understood(holterData);
}

void TestRecord::SetHolterData(std::unique_ptr<KxHolterData> data) {
    Replace(holterData, std::move(data));
}

KxSpirometry* TestRecord::Spirometry() const {
    return Understood(spirometry);
}

void TestRecord::SetSpirometry(std::unique_ptr<KxSpirometry> block) {
    Replace(spirometry, std::move(block));
}

}  // namespace kx
