#include "platform/files.h"
#include "platform/library_file.h"
#include "platform/program_path.h"
#include "support/files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>

namespace {

using platform::faultOfLinuxLibrary;
using platform::importsOfWindowsLibrary;
using testing::ElementsAre;
using testing::IsEmpty;

void put(std::string& file, std::size_t at, std::uint64_t number, std::size_t size) {
    for (std::size_t byte = 0; byte < size; ++byte) {
        file[at + byte] = static_cast<char>(number >> (8 * byte));
    }
}

/// A Windows library with one section, loaded at 0x1000, and two imports.
std::string windowsLibrary() {
    std::string file(0x300, '\0');
    put(file, 0x3C, 0x40, 4);
    file.replace(0x40, 2, "PE");
    put(file, 0x46, 1, 2);     // Sections.
    put(file, 0x54, 0xF0, 2);  // Size of the optional header.
    put(file, 0x58, 0x20B, 2); // Its kind.
    put(file, 0xD0, 0x1000, 4);
    put(file, 0x154, 0x1000, 4); // The section's address, size and place.
    put(file, 0x158, 0x100, 4);
    put(file, 0x15C, 0x200, 4);
    put(file, 0x20C, 0x1080, 4);
    put(file, 0x220, 0x1090, 4);
    file.replace(0x280, 5, "a.dll");
    file.replace(0x290, 5, "b.dll");
    return file;
}

/// A Linux library with one segment to load.
std::string linuxLibrary() {
    std::string file(0x100, '\0');
    file.replace(0, 4,
                 "\x7f"
                 "ELF");
    put(file, 32, 0x40, 8);
    put(file, 54, 56, 2);
    put(file, 56, 1, 2);
    put(file, 0x40, 1, 4);
    put(file, 0x60, 0x100, 8);
    put(file, 0x68, 0x200, 8);
    return file;
}

TEST(LibraryFile, ImportsAreReadWhereverTheyAreDamaged) {
    const std::string good = windowsLibrary();
    EXPECT_THAT(importsOfWindowsLibrary(good), ElementsAre("a.dll", "b.dll"));
    EXPECT_THAT(importsOfWindowsLibrary(""), IsEmpty());
    EXPECT_THAT(importsOfWindowsLibrary(linuxLibrary()), IsEmpty());
    for (std::size_t size = 0; size < good.size(); ++size) {
        EXPECT_LE(importsOfWindowsLibrary(good.substr(0, size)).size(), 2U);
    }
    for (std::size_t at = 0; at + 4 <= good.size(); ++at) {
        std::string damaged = good;
        put(damaged, at, 0xFFFFFFFF, 4);
        for (const std::string& name : importsOfWindowsLibrary(damaged)) {
            EXPECT_LE(name.size(), 260U);
        }
    }
}

TEST(LibraryFile, HeadersThatLeadOutOfTheFileAreFaults) {
    const std::string good = linuxLibrary();
    EXPECT_EQ(faultOfLinuxLibrary(good), std::nullopt);
    EXPECT_EQ(faultOfLinuxLibrary("no library"), std::nullopt);
    for (std::size_t size = 4; size < good.size(); ++size) {
        EXPECT_TRUE(faultOfLinuxLibrary(good.substr(0, size))) << size;
    }
    for (const std::size_t number : {std::size_t{32}, std::size_t{0x48}, std::size_t{0x60}}) {
        std::string damaged = good;
        put(damaged, number, ~std::uint64_t{0}, 8);
        EXPECT_TRUE(faultOfLinuxLibrary(damaged)) << number;
    }
    std::string dynamic = good;
    put(dynamic, 0x40, 2, 4); // A dynamic section that nothing loads.
    EXPECT_TRUE(faultOfLinuxLibrary(dynamic));
}

TEST(LibraryFile, RealOnesAreSound) {
    const std::string program = test_support::readFile(test_support::fmuPath("tyre"));
    EXPECT_EQ(faultOfLinuxLibrary(program), std::nullopt);
}

} // namespace
