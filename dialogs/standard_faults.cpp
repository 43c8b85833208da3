// The functions by which the standard library's templates throw, and its last words before the program ends,
// in a small form.
//
// The library's own come in one object file with all its exception classes, which keep their texts in
// strings, whose file in turn holds the random numbers; the last words bring a reader of mangled names.
// Together a sixth of the DLL, of which this library uses nothing: it catches everything at its boundaries
// and tells only a lack of memory from other exceptions. A function that is missing here shows as one that is
// defined twice when the DLL is linked.
#include <cstdlib>
#include <exception>
#include <new>

namespace {

// A length or an index that no container allows.
class Fault final : public std::exception {
  public:
    const char* what() const noexcept override { return "fault"; }
};

}  // namespace

// The names are the implementation's. NOLINTBEGIN(*-reserved-identifier,cert-*)
namespace std {

[[noreturn]] void __throw_bad_alloc() {
    throw bad_alloc();
}

[[noreturn]] void __throw_bad_array_new_length() {
    throw bad_array_new_length();
}

[[noreturn]] void __throw_length_error(const char*) {
    throw Fault();
}

[[noreturn]] void __throw_logic_error(const char*) {
    throw Fault();
}

[[noreturn]] void __throw_out_of_range_fmt(const char*, ...) {
    throw Fault();
}

}  // namespace std

namespace __gnu_cxx {

void __verbose_terminate_handler() {
    std::abort();
}

}  // namespace __gnu_cxx
// NOLINTEND(*-reserved-identifier,cert-*)
