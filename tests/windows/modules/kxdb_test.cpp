// The product's kxdb.dll: the staff file beside it, through the binding and as a folder of its own.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "lib/modules/database_records.h"
#include "tests/windows/modules/spy.h"

namespace {

namespace fs = std::filesystem;

using TechList = std::uint32_t(__stdcall*)(kx::TechnicianRecord*, std::uint32_t);
using PhysList = std::uint32_t(__stdcall*)(std::uint32_t, kx::PhysicianRecord*, std::uint32_t);

fs::path ProgramFolder() {
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return fs::path(path).parent_path();
}

fs::path ProductFolder() {
    return (ProgramFolder() / ".." / ".." / "bin").lexically_normal();
}

// kxdb.dll from a folder that has the staff file of this test, or none.
class DatabaseInAFolder : public testing::Test {
  protected:
    DatabaseInAFolder() : folder_(ProgramFolder() / "kxdb_test") {
        fs::remove_all(folder_);
        fs::create_directories(folder_);
        fs::copy_file(ProductFolder() / "kxdb.dll", folder_ / "kxdb.dll");
        module_ = LoadLibraryW((folder_ / "kxdb.dll").c_str());
        techList_ = kxtest::FindExport<TechList>(module_, "TECH_LIST");
        physList_ = kxtest::FindExport<PhysList>(module_, "PHYS_LIST");
    }
    ~DatabaseInAFolder() override {
        FreeLibrary(module_);
        fs::remove_all(folder_);
    }

    void Write(const std::string& text) { std::ofstream(folder_ / "staff.csv", std::ios::binary) << text; }
    std::uint32_t Technicians() { return techList_(technicians_.data(), 4); }

    fs::path folder_;
    HMODULE module_;
    TechList techList_;
    PhysList physList_;
    std::vector<kx::TechnicianRecord> technicians_{5};
};

TEST_F(DatabaseInAFolder, ListsNobodyWithoutAFile) {
    EXPECT_EQ(0u, Technicians());
    Write("tecnico;Bassi;Elena\n");
    EXPECT_EQ(1u, Technicians());
    EXPECT_STREQ("Bassi", technicians_[0].lastName);
    fs::remove(folder_ / "staff.csv");
    EXPECT_EQ(0u, Technicians());
    Write(std::string((1 << 20) + 1, '#'));
    EXPECT_EQ(0u, Technicians());
}

TEST_F(DatabaseInAFolder, WritesNoMoreThanItsCapacity) {
    std::string file;
    for (int i = 0; i < 2000; ++i) {
        file += "tecnico;T" + std::to_string(i) + "\nmedico;M" + std::to_string(i) + "\n";
    }
    Write(file);
    std::memset(&technicians_[4], 0x5A, sizeof technicians_[4]);
    EXPECT_EQ(4u, Technicians());
    EXPECT_STREQ("T3", technicians_[3].lastName);
    EXPECT_EQ(0x5A, technicians_[4].lastName[0]);
    std::vector<kx::PhysicianRecord> physicians(1025);
    EXPECT_EQ(1024u, physList_(0, physicians.data(), 1024));
    EXPECT_STREQ("M1023", physicians[1023].lastName);
    EXPECT_EQ('\0', physicians[1024].lastName[0]);
    EXPECT_EQ(1u, physList_(1999, physicians.data(), 1024));
    EXPECT_STREQ("M1999", physicians[0].lastName);
    EXPECT_EQ(0u, physList_(2000, physicians.data(), 1024));
    EXPECT_EQ(0u, techList_(nullptr, 1024));
}

}  // namespace
