// The physicians and technicians of the suite's data base, asked for through its module.
#include "dialogs/interpretation/staff_names.h"

#include <algorithm>
#include <new>

#include "dialogs/statements/interp_report.h"
#include "lib/modules/database_services.h"

namespace kx {
namespace {

// Call: asks the binding for a list, with the array of records and its capacity.
template <class Record, class Call>
StaffList<Record> List(const StaffListLines& lines, Reporter& log, Call call) {
    StaffList<Record> list;
    DatabaseServices database;
    if (database.ErrorText()[0] != '\0') {
        log.LOGMEMORYERROR(kInterpSource, lines.noBinding);
        return list;
    }
    list.records.reset(new (std::nothrow) Record[kStaffListCapacity]());
    if (list.records == nullptr) {
        log.LOGMEMORYERROR(kInterpSource, lines.noMemory);
        return list;
    }
    list.reported = call(database, list.records.get());
    list.count = std::min(list.reported, kStaffListCapacity);
    if (database.ErrorText()[0] != '\0') {
        database.ReportError(log);  // the export is missing
    }
    return list;
}

}  // namespace

StaffList<TechnicianRecord> ListTechnicians(const StaffListLines& lines, Reporter& log) {
    return List<TechnicianRecord>(lines, log, [](DatabaseServices& database, TechnicianRecord* records) {
        return database.TECH_LIST(records, kStaffListCapacity);
    });
}

StaffList<PhysicianRecord> ListPhysicians(const StaffListLines& lines, Reporter& log) {
    return List<PhysicianRecord>(lines, log, [](DatabaseServices& database, PhysicianRecord* records) {
        return database.PHYS_LIST(0, records, kStaffListCapacity);
    });
}

}  // namespace kx
