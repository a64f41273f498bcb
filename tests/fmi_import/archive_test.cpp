#include "fmi_import/archive/archive_entry_rules.h"
#include "fmi_import/import_session.h"
#include "support/archive_writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <system_error>
#include <zlib.h>

namespace import_test {

namespace {

using test_support::ArchiveEntry;
using test_support::writeArchive;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
namespace fs = std::filesystem;

const ArchiveEntry modelDescription{"modelDescription.xml",
                                    R"(<fmiModelDescription fmiVersion="2.0"/>)"};

/// Replaces every `from` in a file by `to`, which is as long.
void patch(const fs::path& file, const std::string& from, const std::string& to) {
    std::string bytes = test_support::readFile(file);
    for (auto at = bytes.find(from); at != std::string::npos; at = bytes.find(from, at + 1)) {
        bytes.replace(at, from.size(), to);
    }
    test_support::writeFile(file, bytes);
}

std::string littleEndian(std::uint32_t number) {
    std::string bytes;
    for (unsigned shift = 0; shift < 32; shift += 8) {
        bytes += static_cast<char>(number >> shift);
    }
    return bytes;
}

/// Writes `bytes` at `offset` in the record `number` of those that begin with `signature`.
void patchRecord(const fs::path& file, const std::string& signature, int number, std::size_t offset,
                 const std::string& bytes) {
    std::string archive = test_support::readFile(file);
    std::size_t at = archive.find(signature);
    for (int record = 1; record < number; ++record) {
        at = archive.find(signature, at + 1);
    }
    archive.replace(at + offset, bytes.size(), bytes);
    test_support::writeFile(file, archive);
}

TEST(Archive, UnpacksFoldersAndDataOfEveryKind) {
    Session session;
    const fs::path file = session.outside / "good.fmu";
    const std::string large(3'000'000, 'x');
    writeArchive(file, {modelDescription,
                        {"resources/", ""},
                        {"resources/road data/large.bin", large},
                        {"resources\\nested\\stored.txt", "a\r\nb", false},
                        {"./.hidden", "h"},
                        {"resources/a..b.txt", "dots"},
                        {"empty", ""},
                        {"empty", "the last one wins"}});
    EXPECT_EQ(session.unpack(file), fmi_version_2_0_enu);
    EXPECT_THAT(Session::namesIn(session.directory()),
                ElementsAre(".hidden", "empty", "modelDescription.xml", "resources",
                            "resources/a..b.txt", "resources/nested", "resources/nested/stored.txt",
                            "resources/road data", "resources/road data/large.bin"));
    EXPECT_EQ(test_support::readFile(session.directory() / "resources/road data/large.bin"), large);
    EXPECT_EQ(test_support::readFile(session.directory() / "resources/nested/stored.txt"),
              "a\r\nb");
    EXPECT_EQ(test_support::readFile(session.directory() / "empty"), "the last one wins");
}

/// An archive with one stored file whose numbers are all in its Zip64 records.
std::string zip64Archive(const std::string& name, const std::string& content) {
    const auto number = [](std::uint64_t value, unsigned size) {
        std::string bytes;
        for (unsigned byte = 0; byte < size; ++byte) {
            bytes += static_cast<char>(value >> (8 * byte));
        }
        return bytes;
    };
    const std::string checksum = number(
        crc32(0, reinterpret_cast<const Bytef*>(content.data()), static_cast<uInt>(content.size())),
        4);
    const std::string unknown = number(0xFFFFFFFF, 4);
    const std::string nameSize = number(name.size(), 2);
    const std::string version = number(45, 2);
    const std::string sizes = number(content.size(), 8) + number(content.size(), 8);
    const std::string plain = number(0, 8); // No flags, stored, no time.
    std::string archive = "PK\3\4" + version + plain + checksum + unknown + unknown + nameSize +
                          number(20, 2) + name + number(1, 2) + number(16, 2) + sizes + content;
    const std::size_t directory = archive.size();
    archive += "PK\1\2" + version + version + plain + checksum + unknown + unknown + nameSize +
               number(28, 2) + number(0, 2) + number(0, 2) + number(0, 2) + number(0, 4) + unknown +
               name + number(1, 2) + number(24, 2) + sizes + number(0, 8);
    const std::size_t end = archive.size();
    return archive + "PK\6\6" + number(44, 8) + version + version + number(0, 8) + number(1, 8) +
           number(1, 8) + number(end - directory, 8) + number(directory, 8) + "PK\6\7" +
           number(0, 4) + number(end, 8) + number(1, 4) + "PK\5\6" + number(0, 4) +
           number(0xFFFF, 2) + number(0xFFFF, 2) + unknown + unknown + number(0, 2);
}

TEST(Archive, WithNumbersOf64BitsIsRead) {
    Session session;
    const std::string bytes = zip64Archive(modelDescription.name, modelDescription.content);
    test_support::writeFile(session.outside / "large.fmu", bytes);
    EXPECT_EQ(session.unpack(session.outside / "large.fmu"), fmi_version_2_0_enu)
        << testing::PrintToString(session.log);
    EXPECT_EQ(test_support::readFile(session.directory() / "modelDescription.xml"),
              modelDescription.content);
    // Also behind a program that unpacks itself, and cut anywhere.
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        test_support::writeFile(session.outside / "cut.fmu", bytes.substr(0, size));
        EXPECT_EQ(session.unpack(session.outside / "cut.fmu"), fmi_version_unknown_enu);
    }
}

TEST(Archive, UnpackedAgainKeepsFilesThatAreTheSame) {
    Session session;
    const fs::path kept = session.directory() / "kept";
    const fs::path changed = session.directory() / "changed";
    writeArchive(session.outside / "a.fmu", {modelDescription, {"kept", "x"}, {"changed", "1"}});
    session.unpack(session.outside / "a.fmu");
    std::error_code error;
    fs::create_hard_link(kept, session.outside / "kept", error);
    fs::create_hard_link(changed, session.outside / "changed", error);
    writeArchive(session.outside / "a.fmu", {modelDescription, {"kept", "x"}, {"changed", "2"}});
    EXPECT_EQ(session.unpack(session.outside / "a.fmu"), fmi_version_2_0_enu);
    EXPECT_EQ(test_support::readFile(changed), "2");
    if (!error) {
        EXPECT_TRUE(fs::equivalent(kept, session.outside / "kept"));
        EXPECT_EQ(test_support::readFile(session.outside / "changed"), "1");
    }
}

TEST(Archive, IsAlsoFoundWithoutItsSuffixAndReplacesWhatIsThere) {
    Session session;
    writeArchive(session.outside / "model.zip", {modelDescription});
    test_support::writeFile(session.directory() / "modelDescription.xml", std::string(1000, '?'));
    EXPECT_EQ(session.unpack(session.outside / "model"), fmi_version_2_0_enu);
    EXPECT_EQ(test_support::readFile(session.directory() / "modelDescription.xml"),
              modelDescription.content);
}

TEST(Archive, ThatCannotBeOpenedFailsWithOneLine) {
    Session session;
    const fs::path good = session.outside / "good.fmu";
    writeArchive(good, {modelDescription});
    const std::string bytes = test_support::readFile(good);
    test_support::writeFile(session.outside / "empty.fmu", "");
    test_support::writeFile(session.outside / "truncated.fmu", bytes.substr(0, bytes.size() / 2));
    test_support::writeFile(session.outside / "text.fmu", "This is not an archive.");
    fs::create_directory(session.outside / "folder.fmu");
    for (const char* name :
         {"missing.fmu", "empty.fmu", "truncated.fmu", "text.fmu", "folder.fmu"}) {
        session.log.clear();
        const fs::path file = session.outside / name;
        std::string shown = test_support::narrow(file);
        std::ranges::replace(shown, '\\', '/');
        EXPECT_EQ(session.unpack(file), fmi_version_unknown_enu) << name;
        EXPECT_THAT(session.log,
                    ElementsAre("5 FMILIB Detecting FMI standard version",
                                "5 FMIZIP Unpacking FMU into <dir>",
                                "1 FMIZIP Unpacking of FMU " + shown + " into <dir> failed"));
    }
    EXPECT_TRUE(fs::is_empty(session.directory()));
}

TEST(Archive, NeedsAnExistingDirectory) {
    Session session;
    writeArchive(session.outside / "good.fmu", {modelDescription});
    fs::remove(session.directory());
    EXPECT_EQ(session.unpack(session.outside / "good.fmu"), fmi_version_unknown_enu);
    EXPECT_FALSE(fs::exists(session.directory()));
    EXPECT_EQ(fmi_import_get_fmi_version(session.context, "x.fmu", ""), fmi_version_unknown_enu);
    EXPECT_TRUE(session.hasLine("1 FMILIB No temporary directory name specified"));
    EXPECT_EQ(fmi_import_get_fmi_version(session.context, "", "x"), fmi_version_unknown_enu);
    EXPECT_TRUE(session.hasLine("1 FMILIB No FMU filename specified"));
}

TEST(Archive, WithAHarmfulEntryIsRefusedBeforeAnythingIsWritten) {
    const std::vector<ArchiveEntry> harmful{
        {"../outside", "x"},
        {"..\\outside", "x"},
        {"a/../../outside", "x"},
        {"../outside/", ""},
        {"/outside", "x"},
        {"\\outside", "x"},
        {"C:outside", "x"},
        {"c:/outside", "x"},
        {"FMITools/fmuclean.sh", "x"},
        {"./fmitools\\fmuclean.bat", "x"},
        {"FMITOOLS. /fmuclean.bat", "x"},
        {std::string(256, 'n'), "x"},
        {"bell\a", "x"},
        {"link", "../outside", false, 0120777},
        {"pipe", "", false, 0010644},
    };
    for (const ArchiveEntry& entry : harmful) {
        Session session;
        const fs::path file = session.outside / "harmful.fmu";
        writeArchive(file, {modelDescription, entry});
        EXPECT_EQ(session.unpack(file), fmi_version_unknown_enu) << entry.name;
        std::string shown = fmi_import::presentableName(entry.name);
        std::ranges::replace(shown, '\\', '/');
        EXPECT_THAT(session.log,
                    Contains(HasSubstr("1 FMIZIP The archive entry '" + shown + "' is refused: ")));
        EXPECT_THAT(Session::namesIn(session.outside.path()),
                    ElementsAre("harmful.fmu", "unpacked"));
    }
}

TEST(Archive, WithDamageOrImpossibleSizesFailsAndNamesTheEntry) {
    struct Case {
        std::string reason;
        std::function<void(const fs::path&)> damage;
    };

    // The sizes stand in the archive's directory, the packed before the unpacked one.
    const std::string sizes = littleEndian(7) + littleEndian(7);
    const std::vector<Case> cases{
        {"its data is damaged", [](const fs::path& file) { patch(file, "payload", "pAyload"); }},
        {"the archive unpacks to more than 17179869184 bytes",
         [&](const fs::path& file) { patch(file, sizes, littleEndian(7) + "\xfe\xff\xff\xff"); }},
        {"its data overlaps that of other entries or the archive's end",
         [&](const fs::path& file) { patch(file, sizes, "\xfe\xff\xff\x7f" + littleEndian(7)); }},
        {"its name has a control character",
         [](const fs::path& file) { patch(file, "data.bin", std::string("data\0bin", 8)); }},
        {"the header before its data calls it 'dAta.bin'",
         [](const fs::path& file) { patchRecord(file, "PK\3\4", 1, 30, "dAta.bin"); }},
        {"its header is damaged",
         [](const fs::path& file) { patchRecord(file, "PK\1\2", 1, 42, littleEndian(1)); }},
        {"its data overlaps that of other entries", // All of them have the first one's.
         [](const fs::path& file) { patchRecord(file, "PK\1\2", 2, 42, littleEndian(0)); }},
        {"its data overlaps that of other entries", // The header of the next is this one's field.
         [](const fs::path& file) {
             patchRecord(file, "PK\3\4", 1, 28, std::string("\x2d\0", 2));
         }},
    };
    for (const Case& test : cases) {
        Session session;
        const fs::path file = session.outside / "damaged.fmu";
        std::vector<ArchiveEntry> entries{
            {"data.bin", "payload", false}, {"data.bin", "payload", false}, modelDescription};
        for (const char* name : {"a", "b", "c", "d"}) {
            entries.push_back({name, "payload", false});
        }
        writeArchive(file, entries);
        test.damage(file);
        EXPECT_EQ(session.unpack(file), fmi_version_unknown_enu) << test.reason;
        EXPECT_THAT(session.log, Contains(HasSubstr("' is refused: " + test.reason)));
        EXPECT_FALSE(fs::exists(session.directory() / "data.bin"));
    }
}

TEST(Archive, WithUnsupportedMethodsOrTooManyEntriesIsRefused) {
    Session session;
    const fs::path file = session.outside / "refused.fmu";
    writeArchive(file, {{"x", "y", false}});
    // Version needed, flags and method of the directory's only record.
    patch(file, std::string("PK\1\2\0\0\x14\0\0\0\0\0", 12),
          std::string("PK\1\2\0\0\x14\0\0\0\x0c\0", 12));
    EXPECT_EQ(session.unpack(file), fmi_version_unknown_enu);
    EXPECT_THAT(session.log, Contains(HasSubstr("compression method 12 is not supported")));
    writeArchive(file, std::vector<ArchiveEntry>(100'001, {"x", "", false}));
    EXPECT_EQ(session.unpack(file), fmi_version_unknown_enu);
    EXPECT_THAT(session.log,
                Contains(HasSubstr("1 FMIZIP The archive has more than 100000 entries; ")));
    EXPECT_TRUE(fs::is_empty(session.directory()));
}

TEST(Archive, DoesNotFollowLinksThatAreInTheDirectoryAlready) {
    Session session;
    std::error_code error;
    fs::create_directory_symlink(session.outside.path(), session.directory() / "resources", error);
    fs::create_symlink(session.outside / "victim", session.directory() / "top", error);
    if (error) {
        GTEST_SKIP() << "no symbolic links here: " << error.message();
    }
    test_support::writeFile(session.outside / "victim", "unharmed");
    writeArchive(session.outside / "a.fmu", {modelDescription, {"top", "new"}});
    EXPECT_EQ(session.unpack(session.outside / "a.fmu"), fmi_version_2_0_enu);
    EXPECT_EQ(test_support::readFile(session.outside / "victim"), "unharmed");
    writeArchive(session.outside / "a.fmu", {modelDescription, {"resources/victim", "new"}});
    EXPECT_EQ(session.unpack(session.outside / "a.fmu"), fmi_version_unknown_enu);
    EXPECT_EQ(test_support::readFile(session.outside / "victim"), "unharmed");
}

TEST(Archive, NamesThatWindowsReadsItsOwnWayAreRefusedThere) {
    using fmi_import::entryNameFault;
    using fmi_import::NameRules;
    for (const char* name :
         {"NUL", "resources/con.txt", "com1", "a/LPT9.x.y", "aux /b", "CONIN$", "file:stream",
          "a?b", "COM\302\271.txt", "lpt\263", ". ./x", "a/..."}) {
        EXPECT_TRUE(entryNameFault(NameRules::windows, name)) << name;
        EXPECT_FALSE(entryNameFault(NameRules::posix, name)) << name;
    }
    for (const char* name : {"./a", "console", "com10", "nullable.txt", ".hidden", "a b/c.d",
                             "resources\\road.xml", "r\303\244der.txt", "trailing.", "blank /x"}) {
        EXPECT_FALSE(entryNameFault(NameRules::windows, name)) << name;
    }
}

TEST(Archive, NamesLoseTheEndThatWindowsDropsThere) {
    using fmi_import::NameRules;
    using fmi_import::nativeEntryName;
    EXPECT_EQ(nativeEntryName(NameRules::windows, "a. /.hid.den..\\c. "), "a/.hid.den/c");
    EXPECT_EQ(nativeEntryName(NameRules::windows, "./a./"), "./a/");
    EXPECT_EQ(nativeEntryName(NameRules::posix, "a. /b\\c."), "a. /b/c.");
    Session session;
    const bool isWindows = fs::path::preferred_separator == '\\';
    writeArchive(session.outside / "a.fmu", {modelDescription, {"vendor.", "x"}});
    EXPECT_EQ(session.unpack(session.outside / "a.fmu"), fmi_version_2_0_enu);
    EXPECT_THAT(Session::namesIn(session.directory()),
                ElementsAre("modelDescription.xml", isWindows ? "vendor" : "vendor."));
    writeArchive(session.outside / "a.fmu", {modelDescription, {"b.", "x"}, {"b", "y"}});
    EXPECT_EQ(session.unpack(session.outside / "a.fmu"),
              isWindows ? fmi_version_unknown_enu : fmi_version_2_0_enu);
}

TEST(Version, IsReadFromTheStartTagAlone) {
    struct Case {
        std::string document;
        fmi_version_enu_t version;
        std::string line;
    };

    const auto root = [](const std::string& version) {
        return "<?xml version=\"1.0\"?>\n<fmiModelDescription fmiVersion=\"" + version + "\">";
    };
    const std::string aborted = "1 FMIXML Parse error at line 2:\nparsing aborted";
    const std::vector<Case> cases{
        {root("1.0"), fmi_version_1_enu, "5 FMIXML XML specifies FMI 1.0"},
        {root("3.0"), fmi_version_3_0_enu, "4 FMILIB XML specifies FMI standard version 3.0"},
        {root("3.0"), fmi_version_3_0_enu,
         "1 FMILIB The FMU follows FMI 3.0; only FMI 2.0 can be loaded"},
        {root("2.0.4"), fmi_version_2_0_enu, "5 FMIXML XML specifies FMI 2.0"},
        {root("2.0") + "< malformed later", fmi_version_2_0_enu, "5 FMIXML XML specifies FMI 2.0"},
        {"\xef\xbb\xbf<!--" + std::string(100'000, '.') + "-->" + root("2.0").substr(22),
         fmi_version_2_0_enu, "5 FMIXML XML specifies FMI 2.0"},
        {root("2.1"), fmi_version_unknown_enu,
         "1 FMIXML This version of FMI standard is not supported (fmiVersion=2.1)"},
        {root("4.0"), fmi_version_unknown_enu, aborted},
        {root("2"), fmi_version_unknown_enu,
         "1 FMIXML Could not parse fmiVersion attribute '2'. Expected format is 'major.minor' or "
         "'major.minor.patch' with numeric components"},
        {root(" 2.0"), fmi_version_unknown_enu, aborted},
        {"<fmiModelDescription/>", fmi_version_unknown_enu,
         "1 FMIXML Could not find fmiVersion attribute in the XML. Cannot proceed."},
        {"<other/>", fmi_version_unknown_enu,
         "1 FMIXML First element in XML must be fmiModelDescription"},
        {"\n<fmiModelDescription fmiVersion=", fmi_version_unknown_enu,
         "1 FMIXML Parse error at line 2:\nunclosed token"},
        {"\n<fmiModelDescription fmiVersion=2.0>", fmi_version_unknown_enu,
         "1 FMIXML Parse error at line 2:\nnot well-formed (invalid token)"},
        {"", fmi_version_unknown_enu, "1 FMIXML Parse error at line 1:\nno element found"},
    };
    for (const Case& test : cases) {
        Session session;
        test_support::writeFile(session.directory() / "modelDescription.xml", test.document);
        const std::string directory = test_support::narrow(session.directory());
        EXPECT_EQ(fmi_import_get_fmi_version(session.context, nullptr, directory.c_str()),
                  test.version);
        EXPECT_THAT(session.log, Contains(test.line));
    }
}

TEST(Version, IsUnknownWithoutAModelDescriptionEvenWhereAnOldOneLies) {
    Session session;
    test_support::writeFile(session.directory() / "modelDescription.xml", modelDescription.content);
    writeArchive(session.outside / "none.fmu", {{"sub/modelDescription.xml", "x"}});
    EXPECT_EQ(session.unpack(session.outside / "none.fmu"), fmi_version_unknown_enu);
    EXPECT_TRUE(
        session.hasLine("1 FMIXML Cannot open file '<dir>/modelDescription.xml' for parsing"));
    EXPECT_TRUE(session.hasLine("4 FMILIB XML specifies FMI standard version unknown"));
}

} // namespace

} // namespace import_test
