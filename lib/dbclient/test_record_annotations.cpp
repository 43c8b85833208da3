// The two annotation stores of a test record and its current annotation.
#include <new>
#include <utility>

#include "lib/annotation_store.h"
#include "lib/dbclient/test_record.h"

namespace kx {

namespace {

constexpr char kSource[] = "..\\lib\\dbclient\\c_test";
constexpr std::uint32_t kNoStoreLine = 2310;
constexpr std::uint32_t kNoSuchEntryLine = 2315;

AnnotationStore* StoreIn(void* slot) {
    return static_cast<AnnotationStore*>(slot);
}

AnnotationStore* Install(void*& slot, std::unique_ptr<AnnotationStore> store) {
    delete StoreIn(slot);
    slot = store.release();
    return StoreIn(slot);
}

// Null when memory is short, which the store itself does not report either.
template <class... Form>
std::unique_ptr<AnnotationStore> NewStore(Form... form) {
    return std::unique_ptr<AnnotationStore>(new (std::nothrow) AnnotationStore(form...));
}

}  // namespace

void TestRecord::DestroyAnnotations() {
    Install(annotations, nullptr);
    Install(annotations2, nullptr);
}

AnnotationStore* TestRecord::Annotations() {
    return StoreIn(annotations);
}
const AnnotationStore* TestRecord::Annotations() const {
    return StoreIn(annotations);
}
AnnotationStore* TestRecord::Annotations2() {
    return StoreIn(annotations2);
}
const AnnotationStore* TestRecord::Annotations2() const {
    return StoreIn(annotations2);
}

AnnotationStore* TestRecord::CreateAnnotations(std::uint32_t capacity) {
    return Install(annotations, NewStore(capacity));
}

AnnotationStore* TestRecord::CreateAnnotations(std::uint32_t capacity, bool entriesOnly) {
    return Install(annotations, NewStore(capacity, entriesOnly));
}

AnnotationStore* TestRecord::ReplaceAnnotations(std::unique_ptr<AnnotationStore> store) {
    return Install(annotations, std::move(store));
}

AnnotationStore* TestRecord::CreateAnnotations2(std::uint32_t capacity) {
    return Install(annotations2, NewStore(capacity));
}

AnnotationStore* TestRecord::CreateAnnotations2(std::uint32_t capacity, bool entriesOnly) {
    return Install(annotations2, NewStore(capacity, entriesOnly));
}

AnnotationStore* TestRecord::ReplaceAnnotations2(std::unique_ptr<AnnotationStore> store) {
    return Install(annotations2, std::move(store));
}

bool TestRecord::SetCurrentAnnotation(std::uint32_t index, Reporter& log) {
    const AnnotationStore* store = Annotations();
    if (store == nullptr) {
        log.LOGOEMERROR(kSource, kNoStoreLine, "ann NULL");
        return false;
    }
    if (index != 0 && index >= store->Count()) {
        log.LOGOEMERROR(kSource, kNoSuchEntryLine, "ann too large");
        return false;
    }
    if (currentAnnotation != index) {
        currentAnnotation = index;
        modified = 1;
    }
    return true;
}

}  // namespace kx
