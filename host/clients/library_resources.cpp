#include "host/clients/library_resources.h"

#include "host/windows/program_folder.h"
#include "host/windows/text_conversion.h"

namespace kxhost {

LibraryResources::LibraryResources() {
    constexpr const wchar_t* kFileName = L"kxdialogs.dll";
    module_.reset(LoadLibraryExW((ProgramFolder() / kFileName).c_str(), nullptr,
                                 LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE));
    if (!module_) {
        failure_ = std::wstring(kFileName) + L": " + SystemMessage(GetLastError(), kFileName);
    }
}

std::size_t LibraryResources::LoadText(std::uint32_t id, char* buffer, std::size_t size) const {
    if (size == 0) {
        return 0;
    }
    buffer[0] = '\0';
    // With room 0 the system gives the place of the resource, which is not terminated.
    const wchar_t* resource = nullptr;
    const int length = module_ ? LoadStringW(module_.get(), id, reinterpret_cast<wchar_t*>(&resource), 0) : 0;
    if (length <= 0 || resource == nullptr) {
        return 0;
    }
    const std::string text = ToRecordText({resource, static_cast<std::size_t>(length)});
    const std::size_t copied = text.copy(buffer, size - 1);
    buffer[copied] = '\0';
    return copied;
}

}  // namespace kxhost
