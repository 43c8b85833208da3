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

void Destroy(KxAnnotationStore*& slot) {
    delete static_cast<AnnotationStore*>(slot);
    slot = nullptr;
}

// The previous store goes first. Null when memory is short, which the store itself does not report either.
template <class... Form>
AnnotationStore* Create(KxAnnotationStore*& slot, Form... form) {
    Destroy(slot);
    auto* store = new (std::nothrow) AnnotationStore(form...);
    slot = store;
    return store;
}

}  // namespace

void TestRecord::DestroyAnnotations() {
    Destroy(annotations);
    Destroy(annotations2);
}

AnnotationStore* TestRecord::Annotations() {
    return static_cast<AnnotationStore*>(annotations);
}
const AnnotationStore* TestRecord::Annotations() const {
    return static_cast<const AnnotationStore*>(annotations);
}
AnnotationStore* TestRecord::Annotations2() {
    return static_cast<AnnotationStore*>(annotations2);
}
const AnnotationStore* TestRecord::Annotations2() const {
    return static_cast<const AnnotationStore*>(annotations2);
}

AnnotationStore* TestRecord::CreateAnnotations(std::uint32_t capacity) {
    return Create(annotations, capacity);
}

AnnotationStore* TestRecord::CreateAnnotations(std::uint32_t capacity, bool entriesOnly) {
    return Create(annotations, capacity, entriesOnly);
}

AnnotationStore* TestRecord::ReplaceAnnotations(std::unique_ptr<AnnotationStore> store) {
    Replace(annotations, std::move(store));
    return Annotations();
}

AnnotationStore* TestRecord::CreateAnnotations2(std::uint32_t capacity) {
    return Create(annotations2, capacity);
}

AnnotationStore* TestRecord::CreateAnnotations2(std::uint32_t capacity, bool entriesOnly) {
    return Create(annotations2, capacity, entriesOnly);
}

AnnotationStore* TestRecord::ReplaceAnnotations2(std::unique_ptr<AnnotationStore> store) {
    Replace(annotations2, std::move(store));
    return Annotations2();
}

// Of a host's store no more is read than every store begins with.
bool TestRecord::SetCurrentAnnotation(std::uint32_t index, Reporter& log) {
    if (annotations == nullptr) {
        log.LOGOEMERROR(kSource, kNoStoreLine, "ann NULL");
        return false;
    }
    if (index != 0 && index >= annotations->count) {
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
