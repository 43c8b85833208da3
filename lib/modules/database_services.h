// The binding to the suite's data base.
#pragma once

#include <cstdint>

#include "lib/modules/module_binder.h"

namespace kx {

// Each method is the export of kxdb.dll of the same name and returns its result, or 0 when the module or the
// export is missing (ErrorText says which). Records are the data base's own; a record is passed by its
// address and stays the caller's. A list export fills the caller's array of `capacity` records and returns
// how many it wrote; the caller has zeroed the array.
class DatabaseServices final : public ModuleBinder {
  public:
    DatabaseServices() noexcept : ModuleBinder("kxdb.dll", kMinimumModuleVersion) {}

    // The two name lists of the interpretation pane: physician records of 668 bytes beginning with the one at
    // index `first`, and technician records of 88 bytes.
    std::uint32_t PHYS_LIST(std::uint32_t first, void* records, std::uint32_t capacity) {
        return Call("PHYS_LIST", first, records, capacity);
    }
    std::uint32_t TECH_LIST(void* records, std::uint32_t capacity) {
        return Call("TECH_LIST", records, capacity);
    }

    // Reports the binding's failure itself when the export cannot be resolved.
    std::uint32_t RESET(Reporter& services) { return CallOrReport(services, "RESET"); }

    // Not used by this library: the values pass through.
    std::uint32_t CONFIG() { return Call("CONFIG"); }
    std::uint32_t CLIN_LIST(void* records, std::uint32_t capacity) {
        return Call("CLIN_LIST", records, capacity);
    }
    std::uint32_t QUEUE_LIST(std::uint32_t first, void* records, std::uint32_t capacity) {
        return Call("QUEUE_LIST", first, records, capacity);
    }
    std::uint32_t RPT_LIST(std::uint32_t first, void* records, std::uint32_t capacity) {
        return Call("RPT_LIST", first, records, capacity);
    }
    std::uint32_t TEST_LIST(std::uint32_t first, std::uint32_t second, std::uint32_t third,
                            std::uint32_t fourth, std::uint32_t fifth) {
        return Call("TEST_LIST", first, second, third, fourth, fifth);
    }

    std::uint32_t TEST_ADD(void* record) { return Call("TEST_ADD", record); }
    std::uint32_t TEST_UPDATE(void* record) { return Call("TEST_UPDATE", record); }
    std::uint32_t TEST_DELETE(void* record) { return Call("TEST_DELETE", record); }
    std::uint32_t TEST_FETCH(void* record) { return Call("TEST_FETCH", record); }

    std::uint32_t QUEUE_ADD(void* record) { return Call("QUEUE_ADD", record); }
    std::uint32_t QUEUE_UPDATE(void* record) { return Call("QUEUE_UPDATE", record); }
    std::uint32_t QUEUE_DELETE(void* record) { return Call("QUEUE_DELETE", record); }

    std::uint32_t RPT_ADD(void* record) { return Call("RPT_ADD", record); }
    std::uint32_t RPT_UPDATE(void* record) { return Call("RPT_UPDATE", record); }
    std::uint32_t RPT_DELETE(void* record) { return Call("RPT_DELETE", record); }
    std::uint32_t RPT_FETCH(void* record) { return Call("RPT_FETCH", record); }

    std::uint32_t PHYS_ADD(void* record) { return Call("PHYS_ADD", record); }
    std::uint32_t PHYS_UPDATE(void* record) { return Call("PHYS_UPDATE", record); }
    std::uint32_t PHYS_DELETE(void* record) { return Call("PHYS_DELETE", record); }

    std::uint32_t TECH_ADD(void* record) { return Call("TECH_ADD", record); }
    std::uint32_t TECH_UPDATE(void* record) { return Call("TECH_UPDATE", record); }
    std::uint32_t TECH_DELETE(void* record) { return Call("TECH_DELETE", record); }

    std::uint32_t CLIN_ADD(void* record) { return Call("CLIN_ADD", record); }
    std::uint32_t CLIN_UPDATE(void* record) { return Call("CLIN_UPDATE", record); }
    std::uint32_t CLIN_DELETE(void* record) { return Call("CLIN_DELETE", record); }
};

}  // namespace kx
