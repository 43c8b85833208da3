#include "lib/dbclient/test_record.h"

namespace kx {

void TestRecord::DestroyAnnotations() {}

}  // namespace kx
