// Objects whose deletion a test watches. They keep their memory, filled with a pattern, so that whoever still uses one crashes
// on its table or leaves a trace in it.
#pragma once

#include <cstddef>

namespace kx::test {

// At most 256 in a program; they are never freed.
void Watch(const void* object, std::size_t size);
template <class Object>
Object* Watched(Object* object) {
    Watch(object, sizeof *object);
    return object;
}

int Deletions(const void* watched);
// Whether nothing was written into the deleted object.
bool IsUntouched(const void* watched);

}  // namespace kx::test
