// Parameters files that are meant to do harm, and every encoding that they can have.
#include "run_config/fmi_solver_options.h"
#include "support/files.h"

#include <gtest/gtest.h>

namespace {

using namespace test_support;
using Parameters = run_config::FmuParameterMap;

const Parameters refused{{"refused", "yes"}};

/// What a parameters file with this content holds.
Parameters read(const std::string& content) {
    const TemporaryDirectory directory;
    writeFile(directory / "p.xml", content);
    run_config::FmiSolverOptions options;
    const bool fine = options.readParametersFile(narrow(directory / "p.xml"));
    EXPECT_TRUE(fine || options.parameters().empty());
    return fine ? options.parameters() : refused;
}

std::string document(const std::string& name, const std::string& value) {
    return "<FMUSettings Version=\"1.0\"><Parameters><Parameter Name=\"" + name +
           "\" Type=\"String\">" + value + "</Parameter></Parameters></FMUSettings>";
}

/// ASCII text with `width` bytes a character.
std::string encoded(std::string_view ascii, std::size_t width, bool bigEndian) {
    std::string result;
    for (const char character : ascii) {
        std::string bytes(width, '\0');
        (bigEndian ? bytes.back() : bytes.front()) = character;
        result += bytes;
    }
    return result;
}

TEST(ParametersFile, IsReadInEveryEncoding) {
    using namespace std::string_literals;
    const std::string text = "<?xml version=\"1.0\"?>" + document("a", "1.5");
    const std::string marks[] = {"\xFF\xFE"s, "\xFE\xFF"s, "\xFF\xFE\0\0"s, "\0\0\xFE\xFF"s};
    for (const std::size_t width : {2U, 4U}) {
        for (const bool bigEndian : {false, true}) {
            const std::string content = encoded(text, width, bigEndian);
            const std::string& mark = marks[width - 2 + (bigEndian ? 1 : 0)];
            EXPECT_EQ(read(content), (Parameters{{"a", "1.5"}})) << width << bigEndian;
            EXPECT_EQ(read(mark + content), (Parameters{{"a", "1.5"}})) << width << bigEndian;
            EXPECT_EQ(read(mark + content.substr(0, 101)), refused) << width << bigEndian;
        }
    }
    EXPECT_EQ(read("\xEF\xBB\xBF" + text), (Parameters{{"a", "1.5"}}));
    EXPECT_EQ(read("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>" + document("a", "\xE4")),
              (Parameters{{"a", "\xC3\xA4"}}));
}

TEST(ParametersFile, IsReadOrRefusedAsAWhole) {
    const std::string whole = document("a", "1");
    for (std::size_t size = 0; size < whole.size(); ++size) {
        EXPECT_EQ(read(whole.substr(0, size)), refused) << size;
    }
    EXPECT_EQ(read(std::string(100'000, '\0')), refused);
    EXPECT_EQ(read(whole.substr(0, 30) + '\0' + whole.substr(30)), refused);
    const std::string bomb = "<!DOCTYPE x [<!ENTITY a \"ha\"><!ENTITY b \"&a;&a;&a;&a;\">"
                             "<!ENTITY c SYSTEM \"file:///etc/passwd\">]>";
    EXPECT_EQ(read(bomb + document("a", "&b;&c;&lt;&#65;&bogus;")),
              (Parameters{{"a", "&b;&c;<A&bogus;"}}));
    const std::string huge(1'000'000, 'h');
    EXPECT_EQ(read(document(huge, huge)), (Parameters{{huge, huge}}));
    std::string deep;
    for (int level = 0; level < 100'000; ++level) {
        deep += level < 50'000 ? "<d>" : "</d>";
    }
    EXPECT_EQ(read(document("a", deep)), (Parameters{{"a", ""}}));
    EXPECT_EQ(read(deep + document("a", "1")), (Parameters{{"a", "1"}}));
    EXPECT_EQ(read(deep.substr(0, 150'000)), refused);
}

} // namespace
