// The sub-objects of a test record: made, replaced and freed here, each as what it was made.
#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include "lib/dbclient/holter_record.h"
#include "lib/dbclient/pressure_record.h"
#include "lib/dbclient/raw_block_record.h"
#include "lib/dbclient/spirometry_record.h"
#include "lib/dbclient/stress_stage_record.h"
#include "lib/dbclient/test_record.h"
#include "lib/dbclient/value_series.h"

namespace kx {

namespace {

template <class T>
T* As(void* object) {
    return static_cast<T*>(object);
}

template <class T>
void Free(void*& slot) {
    delete As<T>(slot);
    slot = nullptr;
}

void FreeBytes(void*& slot) {
    delete[] As<std::uint8_t>(slot);
    slot = nullptr;
}

// The old bytes stay where there are no new ones.
bool ReplaceBytes(void*& slot, const void* data, std::size_t size) {
    auto* copy = data != nullptr && size > 0 ? new (std::nothrow) std::uint8_t[size] : nullptr;
    if (copy == nullptr) {
        return false;
    }
    std::memcpy(copy, data, size);
    FreeBytes(slot);
    slot = copy;
    return true;
}

template <class T>
void Replace(void*& slot, std::unique_ptr<T> object) {
    Free<T>(slot);
    slot = object.release();
}

// The objects of an array, from the last to the first.
template <class T, std::size_t N>
void FreeAll(void* (&slots)[N], std::uint32_t& count) {
    for (count = std::min<std::uint32_t>(count, N); count > 0;) {
        Free<T>(slots[--count]);
    }
}

template <class T, std::size_t N>
bool AppendTo(void* (&slots)[N], std::uint32_t& count, std::unique_ptr<T> object) {
    if (count >= N || object == nullptr) {
        return false;
    }
    slots[count++] = object.release();
    return true;
}

template <class T, std::size_t N>
T* At(void* const (&slots)[N], std::uint32_t count, int index) {
    const bool held = index >= 0 && static_cast<std::uint32_t>(index) < std::min<std::uint32_t>(count, N);
    return held ? As<T>(slots[index]) : nullptr;
}

}  // namespace

TestRecord::TestRecord() noexcept : KxTestRecord{} {
    testType = KX_TEST_NEW;
    history = new (std::nothrow) History;
    currentStage = new (std::nothrow) StressStageRecord{};
}

// Nothing here makes `blocks`: whoever fills that array keeps it.
TestRecord::~TestRecord() {
    FreeBytes(buffer7584);
    delete static_cast<History*>(history);
    Free<SpirometryRecord>(spirometry);
    Free<HolterSummaryRecord>(holterSummary);
    Free<HolterDataRecord>(holterData);
    FreeAll<RawBlockRecord>(rawBlocks, rawBlockCount);
    Free<PressureRecord>(pressureSummary);
    FreeAll<PressureRecord>(pressures, pressureCount);
    Free<StressStageRecord>(currentStage);
    FreeAll<StressStageRecord>(stages, stageCount);
    Free<ValueSeries>(series9796);
    for (void*& one : series) {
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

ValueSeries* TestRecord::Series(int code) const {
    return code < kFirstSeriesCode || code > kLastSeriesCode
               ? nullptr
               : As<ValueSeries>(series[code - kFirstSeriesCode]);
}

bool TestRecord::SetSeries(int code, std::unique_ptr<ValueSeries> newSeries) {
    if (code < kFirstSeriesCode || code > kLastSeriesCode) {
        return false;
    }
    Replace(series[code - kFirstSeriesCode], std::move(newSeries));
    return true;
}

void TestRecord::SetSeries9796(std::unique_ptr<ValueSeries> newSeries) {
    Replace(series9796, std::move(newSeries));
}

std::uint32_t TestRecord::StageCount() const {
    return std::min(stageCount, kStageCapacity);
}

StressStageRecord* TestRecord::Stage(int index) const {
    return index == -1 ? As<StressStageRecord>(currentStage)
                       : At<StressStageRecord>(stages, stageCount, index);
}

bool TestRecord::AddStage(std::unique_ptr<StressStageRecord> stage) {
    return AppendTo(stages, stageCount, std::move(stage));
}

void TestRecord::SetCurrentStage(std::unique_ptr<StressStageRecord> stage) {
    Replace(currentStage, std::move(stage));
}

std::uint32_t TestRecord::PressureCount() const {
    return std::min(pressureCount, kPressureCapacity);
}

PressureRecord* TestRecord::Pressure(int index) const {
    return index == -1 ? As<PressureRecord>(pressureSummary)
                       : At<PressureRecord>(pressures, pressureCount, index);
}

bool TestRecord::AddPressure(std::unique_ptr<PressureRecord> reading) {
    return AppendTo(pressures, pressureCount, std::move(reading));
}

void TestRecord::SetPressureSummary(std::unique_ptr<PressureRecord> reading) {
    Replace(pressureSummary, std::move(reading));
}

std::uint32_t TestRecord::RawBlockCount() const {
    return std::min(rawBlockCount, kRawBlockCapacity);
}

const RawBlockRecord* TestRecord::RawBlock(std::uint32_t index) const {
    return index < RawBlockCount() ? As<RawBlockRecord>(rawBlocks[index]) : nullptr;
}

bool TestRecord::AddRawBlock(const RawBlockRecord& block) {
    return AppendTo(rawBlocks, rawBlockCount,
                    std::unique_ptr<RawBlockRecord>(new (std::nothrow) RawBlockRecord(block)));
}

HolterSummaryRecord* TestRecord::HolterSummary() const {
    return As<HolterSummaryRecord>(holterSummary);
}

void TestRecord::SetHolterSummary(std::unique_ptr<HolterSummaryRecord> summary) {
    Replace(holterSummary, std::move(summary));
}

HolterDataRecord* TestRecord::HolterData() const {
    return As<HolterDataRecord>(holterData);
}

void TestRecord::SetHolterData(std::unique_ptr<HolterDataRecord> data) {
    Replace(holterData, std::move(data));
}

SpirometryRecord* TestRecord::Spirometry() const {
    return As<SpirometryRecord>(spirometry);
}

void TestRecord::SetSpirometry(std::unique_ptr<SpirometryRecord> block) {
    Replace(spirometry, std::move(block));
}

}  // namespace kx
