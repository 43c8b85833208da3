#include "lib/dbclient/interpretation_result.h"

#include "lib/text_field.h"

namespace kx {

void InterpretationResult::Clear() {
    static_cast<KxInterpretationResult&>(*this) = {};
    size = KX_INTERPRETATION_RESULT_SIZE;
}

void InterpretationResult::SetText(const char* newText) {
    StoreField(text, newText != nullptr ? newText : "");
}

void InterpretationResult::SetCode(const char* newCode) {
    StoreField(code, newCode != nullptr ? newCode : "");
}

void InterpretationResult::Text(char* buffer, std::size_t bufferSize) const {
    CopyField(text, buffer, bufferSize);
}

void InterpretationResult::Code(char* buffer, std::size_t bufferSize) const {
    CopyField(code, buffer, bufferSize);
}

}  // namespace kx
