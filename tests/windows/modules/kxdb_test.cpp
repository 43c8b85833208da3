// The product's kxdb.dll in a folder of its own: a new archive begins with the staff file beside it.
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
using TechChange = std::uint32_t(__stdcall*)(kx::TechnicianRecord*);
using Reset = std::uint32_t(__stdcall*)();
using PhysList = std::uint32_t(__stdcall*)(std::uint32_t, kx::PhysicianRecord*, std::uint32_t);

fs::path ProgramFolder() {
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return fs::path(path).parent_path();
}

fs::path ProductFolder() { return (ProgramFolder() / ".." / ".." / "bin").lexically_normal(); }

// kxdb.dll from a folder that has the staff file of this test, or none.
class DatabaseInAFolder : public testing::Test {
  protected:
    DatabaseInAFolder() : folder_(ProgramFolder() / "kxdb_test") {
        fs::remove_all(folder_);
        fs::create_directories(folder_);
        fs::copy_file(ProductFolder() / "kxdb.dll", folder_ / "kxdb.dll");
        SetEnvironmentVariableW(L"KX_ARCHIVE", (folder_ / "archive.kxdb").c_str());
        module_ = LoadLibraryW((folder_ / "kxdb.dll").c_str());
        techList_ = kxtest::FindExport<TechList>(module_, "TECH_LIST");
        physList_ = kxtest::FindExport<PhysList>(module_, "PHYS_LIST");
        techAdd_ = kxtest::FindExport<TechChange>(module_, "TECH_ADD");
        techDelete_ = kxtest::FindExport<TechChange>(module_, "TECH_DELETE");
        reset_ = kxtest::FindExport<Reset>(module_, "RESET");
    }
    ~DatabaseInAFolder() override {
        reset_();
        FreeLibrary(module_);
        fs::remove_all(folder_);
    }

    void Write(const std::string& text) { std::ofstream(folder_ / "staff.csv", std::ios::binary) << text; }
    std::uint32_t Technicians() { return techList_(technicians_.data(), 4); }

    fs::path folder_;
    HMODULE module_;
    TechList techList_;
    PhysList physList_;
    TechChange techAdd_;
    TechChange techDelete_;
    Reset reset_;
    std::vector<kx::TechnicianRecord> technicians_{5};
};

TEST_F(DatabaseInAFolder, KeepsWhoIsAddedAndDeletedBesideThePeopleOfTheFile) {
    Write("tecnico;Bassi;Elena\n");
    EXPECT_EQ(1u, Technicians());
    kx::TechnicianRecord added{};
    EXPECT_EQ(0u, techAdd_(&added)) << "without a name";
    std::strcpy(added.lastName, "Verdi");
    EXPECT_EQ(1u, techAdd_(&added));
    fs::remove(folder_ / "staff.csv");
    reset_();
    EXPECT_EQ(2u, Technicians());
    EXPECT_STREQ("Bassi", technicians_[0].lastName);
    EXPECT_STREQ("Verdi", technicians_[1].lastName);
    EXPECT_EQ(1u, techDelete_(&technicians_[0]));
    EXPECT_EQ(0u, techDelete_(&technicians_[0]));
    EXPECT_EQ(1u, Technicians());
    EXPECT_STREQ("Verdi", technicians_[0].lastName);
}

TEST_F(DatabaseInAFolder, AFileThatIsTooLongIsLeftAlone) {
    Write(std::string((1 << 20) + 1, '#'));
    EXPECT_EQ(0u, Technicians());
}

TEST_F(DatabaseInAFolder, WritesNoMoreThanItsCapacity) {
    std::string file;
    for (int i = 0; i < 30; ++i) {
        file += "tecnico;T" + std::to_string(i) + "\nmedico;M" + std::to_string(i) + "\n";
    }
    Write(file);
    std::memset(&technicians_[4], 0x5A, sizeof technicians_[4]);
    EXPECT_EQ(4u, Technicians());
    EXPECT_STREQ("T3", technicians_[3].lastName);
    EXPECT_EQ(0x5A, technicians_[4].lastName[0]);
    std::vector<kx::PhysicianRecord> physicians(17);
    EXPECT_EQ(16u, physList_(0, physicians.data(), 16));
    EXPECT_STREQ("M15", physicians[15].lastName);
    EXPECT_EQ('\0', physicians[16].lastName[0]);
    EXPECT_EQ(1u, physList_(29, physicians.data(), 16));
    EXPECT_STREQ("M29", physicians[0].lastName);
    EXPECT_EQ(0u, physList_(30, physicians.data(), 16));
    EXPECT_EQ(0u, techList_(nullptr, 16));
}

}  // namespace
