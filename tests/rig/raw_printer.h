// A printer of the test's own whose port is a file: the bytes of a RAW document arrive there unchanged.
#pragma once

#include <string>

namespace kx::test {

// Sets the printer up (driver, port, printer) and takes it away again. One at a time.
class RawPrinter {
  public:
    enum class Port {
        kFile,
        kUnreachable  // a file that cannot be made: the printer is found, and loses every document at its end
    };
    explicit RawPrinter(Port port = Port::kFile);
    ~RawPrinter();
    RawPrinter(const RawPrinter&) = delete;
    RawPrinter& operator=(const RawPrinter&) = delete;

    // Empty when the printer could not be set up.
    const std::string& Name() const { return name_; }
    // What was printed so far. A document arrives when it is ended.
    std::string Printed() const;

  private:
    std::string name_;
    std::string port_;
};

}  // namespace kx::test
