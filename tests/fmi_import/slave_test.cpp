#include "fmi_import/import_session.h"
#include "platform/shared_library.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <system_error>

/// Asked for by the leak checker of the sanitizers: an FMU whose library stays in the process may use
/// the callbacks that it was given as long as it is there.
// NOLINTNEXTLINE(bugprone-reserved-identifier,readability-identifier-naming): theirs
extern "C" const char* __lsan_default_suppressions() {
    return "leak:fmi2_callback_functions_t";
}

namespace import_test {

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;
namespace fs = std::filesystem;

const std::string platformName = fs::path::preferred_separator == '\\' ? "win64" : "linux64";
const std::string suffix = fs::path::preferred_separator == '\\' ? ".dll" : ".so";
const std::string otherPlatform = fs::path::preferred_separator == '\\' ? "linux64" : "win64";

fmi2_value_reference_t referenceOf(fmi2_import_t* fmu, const char* name) {
    return fmi2_import_get_variable_vr(fmi2_import_get_variable_by_name(fmu, name));
}

TEST(Slave, GoodRunHasItsLinesAndValues) {
    Session session;
    session.unpack(test_support::fmuPath("scripted_me_and_cs"));
    fmi2_import_t* fmu = session.parse();
    ASSERT_EQ(fmi2_import_create_dllfmu(fmu, fmi2_fmu_kind_cs, nullptr), jm_status_success);
    EXPECT_STREQ(fmi2_import_get_version(fmu), "2.0");
    EXPECT_EQ(fmi2_import_instantiate(fmu, "one", fmi2_cosimulation, nullptr, fmi2_false),
              jm_status_success);
    EXPECT_EQ(fmi2_import_setup_experiment(fmu, 0, 0.0, 0.0, 1, 1.0), fmi2_status_ok);
    EXPECT_EQ(fmi2_import_enter_initialization_mode(fmu), fmi2_status_ok);
    EXPECT_EQ(fmi2_import_exit_initialization_mode(fmu), fmi2_status_ok);
    const fmi2_value_reference_t in = referenceOf(fmu, "rawInput");
    const fmi2_value_reference_t out = referenceOf(fmu, "y");
    const fmi2_real_t value = 2.5;
    fmi2_real_t result = 0.0;
    EXPECT_EQ(fmi2_import_set_real(fmu, &in, 1, &value), fmi2_status_ok);
    EXPECT_EQ(fmi2_import_do_step(fmu, 0.0, 0.1, fmi2_true), fmi2_status_ok);
    EXPECT_EQ(fmi2_import_get_real(fmu, &out, 1, &result), fmi2_status_ok);
    EXPECT_EQ(result, value);
    EXPECT_EQ(fmi2_import_terminate(fmu), fmi2_status_ok);
    fmi2_import_free_instance(fmu);
    fmi2_import_free_instance(fmu);
    EXPECT_EQ(fmi2_import_do_step(fmu, 0.1, 0.1, fmi2_true), fmi2_status_fatal);
    fmi2_import_destroy_dllfmu(fmu);
    fmi2_import_destroy_dllfmu(fmu);
    fmi2_import_free(fmu);
    session.fmu = nullptr;
    const std::string binary = "<dir>/binaries/" + platformName + "/" + "scripted" + suffix;
    EXPECT_THAT(
        session.log,
        ElementsAre(
            "5 FMILIB Allocating FMIL context", "5 FMILIB Detecting FMI standard version",
            "5 FMIZIP Unpacking FMU into <dir>",
            "5 FMIXML Parsing XML to detect FMI standard version", "5 FMIXML XML specifies FMI 2.0",
            "4 FMILIB XML specifies FMI standard version 2.0",
            "5 FMILIB Parsing model description XML",
            "5 FMI2XML Parsing XML element fmiModelDescription",
            "5 FMI2XML Parsing XML element ModelExchange",
            "5 FMI2XML Parsing XML element CoSimulation",
            "5 FMI2XML Parsing XML element UnitDefinitions",
            "5 FMI2XML Parsing XML element TypeDefinitions",
            "5 FMI2XML Parsing XML element LogCategories",
            "5 FMI2XML Parsing XML element ModelVariables", "5 FMI2XML Building alias index",
            "5 FMI2XML Variables x and xAlias reference the same vr 7. Marking 'xAlias' as alias.",
            "5 FMI2XML Parsing XML element ModelStructure", "5 FMI2XML Parsing XML element Outputs",
            "5 FMI2XML Parsing XML element InitialUnknowns",
            "4 FMI2XML Found model identifiers for ModelExchange and CoSimulation",
            "4 FMIXML Could not find or open terminalsAndIcons.xml: "
            "'<dir>/terminalsAndIcons/terminalsAndIcons.xml'. Continuing.",
            "5 FMILIB Parsing finished successfully",
            "4 FMILIB Loading '" + platformName + "' binary with 'default' platform types",
            "5 FMICAPI Loaded FMU binary from " + binary,
            "5 FMICAPI Loading functions for the co-simulation interface",
            "5 FMILIB Successfully loaded all the interface functions",
            "5 FMICAPI Calling fmi2SetupExperiment",
            "5 FMICAPI Calling fmi2EnterInitializationMode",
            "5 FMICAPI Calling fmi2ExitInitializationMode", "5 FMILIB Releasing FMU CAPI interface",
            "5 FMICAPI Successfully unloaded FMU binary",
            "5 FMILIB Releasing allocated library resources"));
}

TEST(Slave, WithoutABinaryEveryCallIsAnsweredAndLoadingCanBeRetried) {
    Session session;
    EXPECT_EQ(session.load("scripted_other_platform"), jm_status_error);
    EXPECT_TRUE(session.hasLine("1 FMILIB Could not change to the DLL directory <dir>/binaries/" +
                                platformName + "/"));
    EXPECT_TRUE(session.hasLine("1 FMILIB The FMU contains no binary for this platform."));
    EXPECT_TRUE(session.hasLine("1 FMILIB The FMU has binaries for: " + otherPlatform +
                                ". Needed here: " + platformName));
    session.log.clear();
    EXPECT_EQ(fmi2_import_do_step(session.fmu, 0.0, 1.0, 1), fmi2_status_fatal);
    EXPECT_EQ(fmi2_import_set_debug_logging(session.fmu, 1, 0, nullptr), fmi2_status_fatal);
    EXPECT_EQ(fmi2_import_get_types_platform(session.fmu), nullptr);
    EXPECT_THAT(session.log, testing::Each("2 FMILIB FMU CAPI is not loaded"));
    EXPECT_EQ(session.log.size(), 3U);
    const fs::path folder = session.directory() / "binaries" / platformName;
    test_support::writeFile(folder, "");
    EXPECT_EQ(fmi2_import_create_dllfmu(session.fmu, fmi2_fmu_kind_cs, nullptr), jm_status_error);
    EXPECT_THAT(session.log, Contains(StartsWith("1 FMILIB System error: ")));
    fs::remove(folder);
    fs::create_directory(folder);
    session.log.clear();
    EXPECT_EQ(fmi2_import_create_dllfmu(session.fmu, fmi2_fmu_kind_cs, nullptr), jm_status_error);
    EXPECT_TRUE(session.hasLine("1 FMILIB The FMU has binaries for: " + otherPlatform +
                                ". Needed here: " + platformName));
    test_support::writeFile(folder / ("other" + suffix), "");
    EXPECT_EQ(fmi2_import_create_dllfmu(session.fmu, fmi2_fmu_kind_cs, nullptr), jm_status_error);
    EXPECT_THAT(session.log, Contains(StartsWith("1 FMICAPI Could not load the FMU binary: ")));
    EXPECT_THAT(fmi2_import_get_last_error(session.fmu), HasSubstr("scripted" + suffix));
    EXPECT_EQ(fmi2_import_create_dllfmu(session.fmu, fmi2_fmu_kind_me, nullptr), jm_status_error);
}

TEST(Slave, WithoutAFunctionOrALibraryIsNotLoaded) {
    Session session;
    EXPECT_EQ(session.load("scripted_missing_function"), jm_status_error);
    EXPECT_THAT(session.log, Contains(StartsWith("2 FMICAPI Could not load the FMI function "
                                                 "'fmi2DoStep'. ")));
    EXPECT_EQ(session.log.back(), "5 FMICAPI Successfully unloaded FMU binary");
    Session lacking;
    EXPECT_EQ(lacking.load("scripted_lacks_library"), jm_status_error);
    EXPECT_THAT(lacking.log, Contains(StartsWith("1 FMICAPI Could not load the FMU binary: ")));
    Session complete;
    EXPECT_EQ(complete.load("scripted_needs_library"), jm_status_success);
    EXPECT_EQ(fmi2_import_create_dllfmu(complete.fmu, fmi2_fmu_kind_cs, nullptr),
              jm_status_success);
    EXPECT_EQ(complete.log.back(), "3 FMILIB FMU binary is already loaded");
}

TEST(Slave, IdentifierMustNotLeadElsewhere) {
    Session session;
    const std::string start = "<fmiModelDescription fmiVersion='2.0' modelName='m' guid='g'>"
                              "<CoSimulation modelIdentifier='";
    for (const char* identifier : {"../evil", "a-b", "", "1a"}) {
        session.parse(start + identifier +
                      "'/><ModelVariables/><ModelStructure/>"
                      "</fmiModelDescription>");
        EXPECT_EQ(fmi2_import_create_dllfmu(session.fmu, fmi2_fmu_kind_cs, nullptr),
                  jm_status_error);
        EXPECT_EQ(session.log.back(),
                  "1 FMICAPI Could not load the FMU binary: model identifier '" +
                      std::string(identifier) + "' is not valid (must be a valid C-identifier)");
        fmi2_import_free(session.fmu);
        session.fmu = nullptr;
    }
}

TEST(Slave, EveryTypeIsReadAsItWasSetUntilTheReset) {
    Session session;
    ASSERT_EQ(session.load("scripted"), jm_status_success);
    fmi2_import_t* fmu = session.fmu;
    fmi2_import_instantiate(fmu, "one", fmi2_cosimulation, nullptr, fmi2_false);
    EXPECT_STREQ(fmi2_import_get_types_platform(fmu), "default");
    const fmi2_value_reference_t first = 0;
    const fmi2_value_reference_t label = referenceOf(fmu, "label");
    fmi2_boolean_t flag = fmi2_true;
    fmi2_integer_t number = 7;
    fmi2_string_t text = "text";
    EXPECT_EQ(fmi2_import_set_boolean(fmu, &first, 1, &flag), fmi2_status_ok);
    EXPECT_EQ(fmi2_import_set_integer(fmu, &first, 1, &number), fmi2_status_ok);
    EXPECT_EQ(fmi2_import_set_string(fmu, &label, 1, &text), fmi2_status_ok);
    flag = fmi2_false;
    number = 0;
    text = "";
    EXPECT_EQ(fmi2_import_get_boolean(fmu, &first, 1, &flag), fmi2_status_ok);
    EXPECT_EQ(fmi2_import_get_integer(fmu, &first, 1, &number), fmi2_status_ok);
    EXPECT_EQ(fmi2_import_get_string(fmu, &label, 1, &text), fmi2_status_ok);
    EXPECT_EQ(flag, fmi2_true);
    EXPECT_EQ(number, 7);
    EXPECT_STREQ(text, "text");
    EXPECT_EQ(fmi2_import_reset(fmu), fmi2_status_ok);
    EXPECT_EQ(fmi2_import_get_integer(fmu, &first, 1, &number), fmi2_status_ok);
    EXPECT_NE(number, 7);
    fmi2_import_free_instance(fmu);
}

TEST(Slave, WithoutTheFunctionsOfACapabilityDoesNotHaveIt) {
    Session session;
    session.unpack(test_support::fmuPath("scripted_missing_function"));
    const fs::path file = session.directory() / "modelDescription.xml";
    std::string description = test_support::readFile(file);
    const std::string identifier = "modelIdentifier=";
    description.insert(description.find(identifier),
                       "canGetAndSetFMUstate='true' canSerializeFMUstate='true' "
                       "providesDirectionalDerivative='true' ");
    session.parse(description);
    fmi2_import_create_dllfmu(session.fmu, fmi2_fmu_kind_cs, nullptr);
    for (const char* flag :
         {"canGetAndSetFMUstate", "canSerializeFMUstate", "providesDirectionalDerivatives"}) {
        EXPECT_TRUE(session.hasLine(std::string("3 FMICAPI Resetting flag 'cs_") + flag + "'"));
    }
}

TEST(Slave, CanBeUnpackedAgainWhileItIsLoaded) {
    Session first;
    ASSERT_EQ(first.load("scripted"), jm_status_success);
    ASSERT_EQ(fmi2_import_instantiate(first.fmu, "one", fmi2_cosimulation, nullptr, 0),
              jm_status_success);
    EXPECT_EQ(first.unpack(test_support::fmuPath("scripted")), fmi_version_2_0_enu);
    const fmi2_value_reference_t reference = referenceOf(first.fmu, "y");
    fmi2_real_t value = 0.0;
    EXPECT_EQ(fmi2_import_get_real(first.fmu, &reference, 1, &value), fmi2_status_ok);
    fmi2_import_free_instance(first.fmu);
}

TEST(Slave, OfANewVersionIsNotTakenForTheOldOneThatIsStillLoaded) {
    Session session;
    ASSERT_EQ(session.load("scripted"), jm_status_success);
    const fs::path file = session.directory() / "binaries" / platformName / ("scripted" + suffix);
    // As a library stays that has symbols which must be unique in a process.
    platform::SharedLibrary kept;
    ASSERT_TRUE(kept.open(test_support::narrow(file)));
    fmi2_import_free(session.fmu);
    session.fmu = nullptr;
    EXPECT_EQ(session.load("scripted"), jm_status_success); // The same version, so far.
    fmi2_import_free(session.fmu);
    session.fmu = nullptr;
    std::string newer = test_support::readFile(file) + "newer";
    if (platformName == "win64") { // Where a library that is loaded can only be renamed.
        const auto timeStamp = static_cast<unsigned char>(newer[0x3c]) + 8U;
        newer[timeStamp] ^= 1;
        fs::rename(file, session.outside / "renamed");
    } else {
        fs::remove(file);
    }
    test_support::writeFile(file, newer);
    EXPECT_EQ(fmi2_import_create_dllfmu(session.parse(), fmi2_fmu_kind_cs, nullptr),
              jm_status_error);
    const std::string state = platformName == "win64" ? "replaced" : "deleted";
    EXPECT_THAT(session.log, Contains(testing::MatchesRegex(
                                 "1 FMICAPI Could not load the FMU binary: instead of <dir>/.* the "
                                 "process still has the library '<dir>/.*scripted.* \\(" +
                                 state + "\\)', which cannot be unloaded; .*")));
}

TEST(Slave, RelativeDirectoriesWorkAndTheCurrentOneStays) {
    Session session;
    const fs::path before = fs::current_path();
    fs::current_path(session.outside.path());
    const std::string fmu = test_support::narrow(test_support::fmuPath("scripted"));
    EXPECT_EQ(fmi_import_get_fmi_version(session.context, fmu.c_str(), "unpacked"),
              fmi_version_2_0_enu);
    session.fmu = fmi2_import_parse_xml(session.context, "unpacked", nullptr);
    EXPECT_EQ(fs::current_path(), session.outside.path());
    fs::current_path(before);
    EXPECT_EQ(fmi2_import_create_dllfmu(session.fmu, fmi2_fmu_kind_cs, nullptr), jm_status_success);
    EXPECT_EQ(fs::current_path(), before);
}

TEST(Slave, MessagesAreForwardedWithVariableNames) {
    Session session;
    session.unpack(test_support::fmuPath("scripted"));
    fmi2_import_t* fmu = session.parse();
    fmi2_log_forwarding(fmu, "tyre", fmi2_status_warning, "load", "#r4# is %d, 50 ## #x# #i4#", 7);
    EXPECT_EQ(session.log.back(), "3 tyre [load][FMU status:Warning] F[1] is 7, 50 # #x# #i4#");
    fmi2_log_forwarding(fmu, nullptr, fmi2_status_fatal, nullptr, "%s",
                        std::string(5000, 'x').c_str());
    EXPECT_EQ(session.log.back(), "1  [FMU status:Fatal] " + std::string(5000, 'x'));
    fmi2_log_forwarding(fmu, "tyre", fmi2_status_ok, nullptr, "%s",
                        "red\033[31m \xc2\x9b bell\a\ttwo\nlines \xc3\xa4");
    EXPECT_EQ(session.log.back(), "4 tyre [FMU status:OK] red?[31m ?? bell?\ttwo\nlines \xc3\xa4");
    session.callbacks.log_level = jm_log_level_error;
    const std::size_t count = session.log.size();
    fmi2_log_forwarding(fmu, "tyre", fmi2_status_ok, nullptr, "unheard");
    EXPECT_EQ(session.log.size(), count);
}

TEST(Helpers, DirectoriesAndUris) {
    Session session;
    const std::string parent = test_support::narrow(session.outside.path());
    char* first = fmi_import_mk_temp_dir(&session.callbacks, parent.c_str(), "a b;");
    char* second = fmi_import_mk_temp_dir(&session.callbacks, parent.c_str(), "a b;");
    ASSERT_TRUE(first != nullptr && second != nullptr);
    EXPECT_STRNE(first, second);
    test_support::writeFile(fs::path(first) / "file", "x");
    EXPECT_EQ(fmi_import_rmdir(&session.callbacks, first), jm_status_success);
    EXPECT_FALSE(fs::exists(first));
    EXPECT_TRUE(fs::exists(second));
    EXPECT_EQ(fmi_import_rmdir(&session.callbacks, first), jm_status_success);
    std::free(first);
    std::free(second);
    const std::string missing = parent + "/missing";
    EXPECT_EQ(fmi_import_mk_temp_dir(&session.callbacks, missing.c_str(), nullptr), nullptr);
    EXPECT_EQ(fmi_import_mk_temp_dir(&session.callbacks, parent.c_str(), "no/such"), nullptr);
    EXPECT_EQ(session.log.back(), "1 JMPRT Could not create a unique temporary directory");
    EXPECT_EQ(fmi_import_rmdir(&session.callbacks, nullptr), jm_status_error);
    char* uri = fmi_import_create_URL_from_abs_path(&session.callbacks, "/a b/%#/~x_-.");
    EXPECT_STREQ(uri, "file:///a%20b/%25%23/~x_-.");
    std::free(uri);
    char* description = fmi_import_get_model_description_path("d", &session.callbacks);
    EXPECT_STREQ(description,
                 otherPlatform == "win64" ? "d/modelDescription.xml" : "d\\modelDescription.xml");
    std::free(description);
}

} // namespace

} // namespace import_test
