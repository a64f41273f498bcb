#include "fmi_import/import_session.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <utility>

namespace import_test {

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

const std::string rootStart = "<fmiModelDescription fmiVersion='2.0' modelName='m' guid='g'>\n";
const std::string slave = "<CoSimulation modelIdentifier='m'/>\n";
const std::string noVariables = "<ModelVariables/>\n";
const std::string structure = "<ModelStructure/>\n";
const std::string rootEnd = "</fmiModelDescription>";

/// A document with these definitions and variables.
std::string document(const std::string& variables, const std::string& definitions = {}) {
    return rootStart + slave + definitions + "<ModelVariables>" + variables + "</ModelVariables>" +
           structure + rootEnd;
}

/// A variable with value reference `reference`.
std::string variable(const std::string& name, int reference, const std::string& attributes,
                     const std::string& type) {
    return "<ScalarVariable name='" + name + "' valueReference='" + std::to_string(reference) +
           "' " + attributes + ">" + type + "</ScalarVariable>\n";
}

std::vector<std::string> names(fmi2_import_t* fmu, int order) {
    fmi2_import_variable_list_t* list = fmi2_import_get_variable_list(fmu, order);
    std::vector<std::string> result;
    for (std::size_t at = 0; at < fmi2_import_get_variable_list_size(list); ++at) {
        result.emplace_back(fmi2_import_get_variable_name(fmi2_import_get_variable(list, at)));
    }
    fmi2_import_free_variable_list(list);
    return result;
}

fmi2_import_variable_t* find(fmi2_import_t* fmu, const std::string& name) {
    return fmi2_import_get_variable_by_name(fmu, name.c_str());
}

std::string unitOf(fmi2_import_t* fmu, const std::string& name) {
    fmi2_import_unit_t* unit =
        fmi2_import_get_real_variable_unit(fmi2_import_get_variable_as_real(find(fmu, name)));
    return unit != nullptr ? fmi2_import_get_unit_name(unit) : "none";
}

TEST(ModelDescription, ThatCannotBeUsedGivesNoFmuAndAReason) {
    struct Case {
        std::string xml;
        std::string line;
    };

    const std::string end = noVariables + structure + rootEnd;
    const std::string aborted = "\nparsing aborted";
    const std::vector<Case> cases{
        {"", "1 FMI2XML Parse error at line 1:\nno element found"},
        {rootStart + slave, "1 FMI2XML Parse error at line 3:\nno element found"},
        {rootStart + "<CoSim", "1 FMI2XML Parse error at line 2:\nunclosed token"},
        {rootStart + "<a></b>" + end, "1 FMI2XML Parse error at line 2:\nmismatched tag"},
        {rootStart + slave + end + "<a/>", "junk after document element"},
        {rootStart + "<a b=c/>" + end,
         "1 FMI2XML Parse error at line 2:\nnot well-formed (invalid token)"},
        {"\n<fmiModelDescription modelName='m' guid='g'/>",
         "1 FMI2XML Parsing XML element 'fmiModelDescription': required attribute 'fmiVersion' not "
         "found"},
        {"\n<fmiModelDescription fmiVersion='2.0' guid='g'/>",
         "1 FMI2XML Parse error at line 2:" + aborted},
        {rootStart + "<CoSimulation/>" + end,
         "1 FMI2XML Parsing XML element 'CoSimulation': required attribute 'modelIdentifier' not "
         "found"},
        {rootStart + end, "1 FMI2XML Neither ModelExchange nor CoSimulation element were parsed "
                          "correctly. FMU kind not known."},
        {rootStart + slave + noVariables + rootEnd,
         "1 FMI2XML No model structure information available. Cannot continue."},
        {rootStart + slave + noVariables +
             "<ModelStructure><Outputs><Unknown index='1'/></Outputs></ModelStructure>" + rootEnd,
         "1 FMI2XML Model structure is not valid due to detected errors. Cannot continue."},
        {rootStart + slave + noVariables +
             "<ModelStructure><Outputs><Unknown/></Outputs></ModelStructure>" + rootEnd,
         "1 FMI2XML Parsing XML element 'Unknown': required attribute 'index' not found"},
        {document("<ScalarVariable name='v'/>"),
         "1 FMI2XML Parsing XML element 'ScalarVariable': required attribute 'valueReference' not "
         "found"},
        {document(variable("v", 1, "", "<Real derivative='2'/>")),
         "1 FMI2XML The 'derivative' attribute must have a value between 1 and the number of model "
         "variables."},
        {document(variable("v", 1, "", "<Real displayUnit='deg'/>")),
         "1 FMI2XML Unknown display unit deg in real type definition"},
        {document("", "<TypeDefinitions><SimpleType name='t'/></TypeDefinitions>"),
         "1 FMI2XML No specific type given for type definition t"},
        {document("", "<TypeDefinitions><SimpleType><Real/></SimpleType></TypeDefinitions>"),
         "1 FMI2XML Parsing XML element 'SimpleType': required attribute 'name' not found"},
        {document("", "<UnitDefinitions><Unit/></UnitDefinitions>"),
         "1 FMI2XML Parsing XML element 'BaseUnit': required attribute 'name' not found"},
        {document("", "<LogCategories><Category/></LogCategories>"),
         "1 FMI2XML Parsing XML element 'Category': required attribute 'name' not found"},
    };
    for (const Case& test : cases) {
        Session session;
        EXPECT_EQ(session.parse(test.xml), nullptr) << test.xml;
        EXPECT_THAT(session.log, Contains(HasSubstr(test.line)));
        EXPECT_EQ(session.log.back(), "5 FMILIB Releasing allocated library resources");
    }
}

std::string withBeforeVariables(const std::string& text) {
    return rootStart + slave + "\n" + text + noVariables + structure + rootEnd;
}

/// Where nothing is read: after the last thing of interest.
std::string withSkipped(const std::string& text) {
    return rootStart + slave + noVariables + structure + "<VendorAnnotations>" + text +
           "</VendorAnnotations>" + rootEnd;
}

TEST(ModelDescription, ThatIsIllFormedIsRefusedWhereverItIs) {
    struct Case {
        std::string text;
        std::string reason;
    };

    const std::string invalid = "not well-formed (invalid token)";
    const std::vector<Case> inside{
        {"<a b='1' b='2'/>", "duplicate attribute"},
        {"<a xmlns:p='u' xmlns:q='u' p:b='1' q:b='2'/>", "duplicate attribute"},
        {"<a b='&odd;'/>", "undefined entity"},
        {"<a>&odd;</a>", "undefined entity"},
        {"<a b='x & y'/>", invalid},
        {"<a b='x &amp y'/>", invalid},
        {"<a b='x < y'/>", invalid},
        {"<a b='&#0;'/>", "reference to invalid character number"},
        {"<a b='&#xFFFE;'/>", "reference to invalid character number"},
        {"<a b='&#99999999999;'/>", "reference to invalid character number"},
        {"<a b='&#x;'/>", invalid},
        {"<a b='bell\a'/>", invalid},
        {"<a b='cut\xc3'/>", invalid},
        {"<a b='overlong\xc0\xaf'/>", invalid},
        {"<a b='surrogate\xed\xa0\x80'/>", invalid},
        {"<!-- two -- dashes -->", invalid},
        {"<a>]]></a>", invalid},
        {"<p:a/>", "unbound prefix"},
        {"<a p:b='1'/>", "unbound prefix"},
        {"<a xmlns:p=''/>", "must not undeclare prefix"},
        {"<p:q:a xmlns:p='u'/>", invalid},
        {"<a b='1'c='2'/>", invalid},
        {"<a b/>", invalid},
        {"<1a/>", invalid},
        {"</a>", "mismatched tag"},
        {"<?xml version='1.0'?>", "XML or text declaration not at start of entity"},
        {"<?XmL a?>", invalid},
        {"<!ELEMENT a ANY>", invalid},
        {"<![CDATA[", "unclosed CDATA section"},
        {"<a>" + std::string(1, '\0') + "</a>", invalid},
    };
    for (const Case& test : inside) {
        Session session;
        for (const std::string& place : {withBeforeVariables(test.text), withSkipped(test.text)}) {
            EXPECT_EQ(session.parse(place), nullptr) << test.text;
            EXPECT_THAT(session.log, Contains(HasSubstr(":\n" + test.reason))) << test.text;
            session.log.clear();
        }
    }
    const std::string good = rootStart + slave + noVariables + structure + rootEnd;
    const std::vector<Case> whole{
        {"text" + good, invalid},
        {good + "text", "junk after document element"},
        {good + "<!-- --", "unclosed token"},
        {" <?xml version='1.0'?>" + good, "XML or text declaration not at start of entity"},
        {"<?xml encoding='UTF-8'?>" + good, "XML declaration not well-formed"},
        {"<?xml version='1.0' standalone='maybe'?>" + good, "XML declaration not well-formed"},
        {"<?xml version='1.0' encoding='windows-1252'?>" + good, "unknown encoding WINDOWS-1252"},
        {"<?xml version='1.0' encoding='UTF-16'?>" + good,
         "encoding specified in XML declaration is incorrect"},
        {"<?xml version='1.0' encoding='US-ASCII'?><!--\xe4-->" + good, invalid},
        {"<!DOCTYPE a [<!ENTITY b 'c'>]>" + good, "document type declarations are not supported"},
    };
    for (const Case& test : whole) {
        Session session;
        EXPECT_EQ(session.parse(test.text), nullptr) << test.text;
        EXPECT_THAT(session.log, Contains(HasSubstr(":\n" + test.reason))) << test.text;
    }
}

TEST(ModelDescription, IsReadInEveryEncodingThatParsersKnow) {
    const std::string name = "name='\xc3\xa4&#xe4;&quot;\r\n\t]'";
    const auto text = [&](const std::string& encoding) {
        return "<?xml version=\"1.0\" encoding='" + encoding + "' standalone='no' ?>\n" +
               "<?odd <&?><!-- <&- -->" +
               document("<ScalarVariable " + name + " valueReference = '1'\n><![CDATA[<&]]>&#60;" +
                        "</ScalarVariable >");
    };
    const std::string utf8 = text("utf-8");
    std::string latin1 = text("ISO-8859-1");
    latin1.erase(latin1.find('\xc3'), 1);
    latin1.replace(latin1.find('\xa4'), 1, "\xe4");
    const auto utf16 = [&](bool isBigEndian) {
        std::string from = text("UTF-16");
        from.replace(from.find("\xc3\xa4"), 2, "\xe4");
        std::string result = isBigEndian ? "\xfe\xff" : "\xff\xfe";
        for (const char c : from) {
            result += isBigEndian ? std::string{'\0', c} : std::string{c, '\0'};
        }
        return result;
    };
    for (const std::string& xml :
         {utf8, "\xef\xbb\xbf" + utf8, latin1, utf16(false), utf16(true)}) {
        Session session;
        ASSERT_NE(session.parse(xml), nullptr) << testing::PrintToString(session.log);
        EXPECT_THAT(names(session.fmu, 0), ElementsAre("\xc3\xa4\xc3\xa4\"  ]"));
    }
}

TEST(ModelDescription, HasLimits) {
    const auto repeated = [](const std::string& text, std::size_t times) {
        std::string result;
        for (std::size_t count = 0; count < times; ++count) {
            result += text;
        }
        return result;
    };
    std::string attributes;
    for (int at = 0; at < 129; ++at) {
        attributes += " a" + std::to_string(at) + "=''";
    }
    const std::vector<std::string> beyond{
        rootStart + repeated("<a>", 256),
        rootStart + "<a" + attributes + "/>",
        rootStart + "<a b='" + std::string((16U << 20U) + 1, 'x') + "'/>",
        rootStart + repeated("<a/>", 20'000'000),
    };
    for (const std::string& xml : beyond) {
        Session session;
        session.callbacks.log_level = jm_log_level_fatal;
        EXPECT_EQ(session.parse(xml), nullptr);
        EXPECT_THAT(session.log,
                    Contains(testing::AnyOf(HasSubstr("more than "), HasSubstr("longer than "))));
    }
}

TEST(ModelDescription, MissingDirectoryOrFile) {
    Session session;
    EXPECT_EQ(session.parse(), nullptr);
    EXPECT_TRUE(
        session.hasLine("1 FMI2XML Cannot open file '<dir>/modelDescription.xml' for parsing"));
    EXPECT_EQ(fmi2_import_parse_xml(session.context, "", nullptr), nullptr);
    EXPECT_TRUE(session.hasLine("1 JMPRT Could not change to the directory "));
    EXPECT_EQ(fmi2_import_parse_xml(session.context, std::string(9000, 'x').c_str(), nullptr),
              nullptr);
    EXPECT_EQ(session.log.back(), "1 FMILIB Directory path for FMU is too long");
}

TEST(ModelDescription, OdditiesAreReportedAndLeftOut) {
    struct Case {
        std::string xml;
        fmi2_fmu_kind_enu_t kind;
        std::string line;
    };

    const std::string end = noVariables + structure + rootEnd;
    const std::vector<Case> cases{
        {rootStart + slave + "<ModelExchange modelIdentifier='e'/>" + end, fmi2_fmu_kind_cs,
         "2 FMI2XML [Line:3] XML element 'ModelExchange' cannot be placed after element "
         "'CoSimulation', skipping"},
        {rootStart + slave + slave + end, fmi2_fmu_kind_cs,
         "2 FMI2XML [Line:3] Multiple instances of XML element 'CoSimulation' are not allowed, "
         "skipping"},
        {rootStart + "<ModelExchange modelIdentifier='e'/>" + slave + end, fmi2_fmu_kind_me_and_cs,
         "5 FMILIB Parsing finished successfully"},
        {rootStart + "<CoSimulation modelIdentifier='m'\n canInterpolateInputs='yes'/>" + end,
         fmi2_fmu_kind_cs,
         "2 FMI2XML XML element 'CoSimulation': could not parse value for enumeration attribute "
         "'canInterpolateInputs'='yes'"},
        {rootStart + slave + "<Odd><Inner/></Odd>" + end, fmi2_fmu_kind_cs,
         "3 FMI2XML [Line:3] Skipping nested XML element 'Inner'"},
        {rootStart + "<CoSimulation modelIdentifier='m' odd='1'/>" + end, fmi2_fmu_kind_cs,
         "2 FMI2XML Unknown attribute 'odd=1' in XML"},
        {"<fmiModelDescription fmiVersion='2.0' modelName='' guid='' "
         "variableNamingConvention='odd'>" +
             slave + end,
         fmi2_fmu_kind_unknown,
         "2 FMI2XML XML element 'fmiModelDescription': could not parse value for enumeration "
         "attribute 'variableNamingConvention'='odd'"},
        {document(variable("v", 1, "", "<Integer min='abc'/>")), fmi2_fmu_kind_cs,
         "2 FMI2XML No variable type element for variable v. Assuming Real."},
        {document(variable("v", 1, "causality='input' variability='discrete'",
                           "<Boolean start='maybe'/>")),
         fmi2_fmu_kind_cs,
         "2 FMI2XML XML element 'Boolean': could not parse value for enumeration attribute "
         "'start'='maybe'"},
        {document("", "<UnitDefinitions><Odd/></UnitDefinitions>"), fmi2_fmu_kind_cs,
         "2 FMI2XML [Line:3] Unknown element 'Odd' in XML, skipping"},
        {document("", "<TypeDefinitions><Odd/></TypeDefinitions>"), fmi2_fmu_kind_cs,
         "2 FMI2XML [Line:3] Unknown element 'Odd' in XML, skipping"},
        {document(variable("v", 1, "", "<Boolean min='1' start='true'/>")), fmi2_fmu_kind_cs,
         "3 FMI2XML Attribute 'min' not processed by element 'Boolean' handle"},
    };
    for (const Case& test : cases) {
        Session session;
        ASSERT_NE(session.parse(test.xml), nullptr) << test.xml;
        EXPECT_EQ(fmi2_import_get_fmu_kind(session.fmu), test.kind);
        EXPECT_THAT(session.log, Contains(test.line));
    }
}

TEST(ModelDescription, TextsOfItAreHarmlessInTheLog) {
    Session session;
    session.parse(
        document(variable("v", 1, "causality='red&#x9b;31m&#10;[OK] forged'", "<Real/>")));
    EXPECT_THAT(session.log, Contains(HasSubstr("'causality'='red??31m?[OK] forged'")));
}

TEST(ModelDescription, TextsAndDefaultExperiment) {
    Session session;
    session.parse("<?xml version='1.0' encoding='ISO-8859-1'?>"
                  "<fmiModelDescription fmiVersion='2.0' modelName='a &lt;b&gt; \xe4' guid='{g}' "
                  "generationTool='tool' description='told' xmlns:xsi='x'>" +
                  slave + "<DefaultExperiment startTime=' 1.5x' stopTime='1e400' stepSize='y'/>" +
                  noVariables + structure + rootEnd);
    EXPECT_STREQ(fmi2_import_get_model_name(session.fmu), "a <b> \xc3\xa4");
    EXPECT_STREQ(fmi2_import_get_GUID(session.fmu), "{g}");
    EXPECT_STREQ(fmi2_import_get_generation_tool(session.fmu), "tool");
    EXPECT_STREQ(fmi2_import_get_description(session.fmu), "told");
    EXPECT_STREQ(fmi2_import_get_model_identifier_CS(session.fmu), "m");
    EXPECT_STREQ(fmi2_import_get_model_identifier_ME(session.fmu), "");
    EXPECT_EQ(fmi2_import_get_default_experiment_start(session.fmu), 1.5);
    EXPECT_TRUE(std::isinf(fmi2_import_get_default_experiment_stop(session.fmu)));
    EXPECT_EQ(fmi2_import_get_default_experiment_step(session.fmu), 1e-2);
    EXPECT_EQ(fmi2_import_get_default_experiment_has_step(session.fmu), 1);
    EXPECT_EQ(fmi2_import_get_default_experiment_has_start(session.fmu), 1);
    EXPECT_EQ(fmi2_import_get_default_experiment_has_stop(session.fmu), 1);
    EXPECT_EQ(fmi2_import_get_default_experiment_has_tolerance(session.fmu), 0);
    EXPECT_EQ(fmi2_import_get_default_experiment_tolerance(session.fmu), 1e-4);
    EXPECT_EQ(session.log.back(),
              "3 FMI2XML fmi2_xml_get_default_experiment_tolerance: returning default value, since "
              "no attribute was defined in modelDescription");
}

TEST(Variables, HaveTheDefaultsOfTheirCausality) {
    struct Case {
        std::string attributes;
        std::string type;
        std::string properties; ///< Type, causality, variability, initial, start given.
    };

    const std::vector<Case> cases{
        {"", "<Real/>", "Real local continuous calculated 0"},
        {"causality='parameter'", "<Real start='1'/>", "Real parameter fixed exact 1"},
        {"causality='calculatedParameter'", "<Real/>",
         "Real calculatedParameter fixed calculated 0"},
        {"causality='input'", "<Real/>", "Real input continuous Undefined 1"},
        {"causality='input' initial='exact'", "<Real/>", "Real input continuous Undefined 1"},
        {"causality='output' variability='constant'", "<Real start='2'/>",
         "Real output constant exact 1"},
        {"causality='output' initial='approx'", "<Real start='2'/>",
         "Real output continuous approx 1"},
        {"causality='local' variability='tunable' initial='exact'", "<Real/>",
         "Real local tunable calculated 0"},
        {"causality='independent'", "<Real/>", "Real independent continuous Undefined 0"},
        {"causality='independent'", "<Real start='0'/>", "Real independent continuous Undefined 0"},
        {"causality='output'", "<Real start='0'/>", "Real output continuous calculated 0"},
        {"causality='weird' variability='odd'", "<Real/>", "Real local continuous calculated 0"},
        {"causality='input' variability='discrete'", "<Integer start='x'/>",
         "Integer input discrete Undefined 1"},
        {"causality='input' variability='discrete'", "<Boolean start='x'/>",
         "Boolean input discrete Undefined 0"},
        {"causality='input' variability='discrete'", "<Real start='x'/>",
         "Real input discrete Undefined 0"},
        {"causality='input'", "<String start=''/>", "String input continuous Undefined 1"},
        {"canHandleMultipleSetPerTimeInstant='false'", "<Enumeration/>",
         "Enumeration local continuous calculated 0"},
        {"", "", "Real local continuous calculated 0"},
        {"", "<Integer/><Real/>", "Integer local continuous calculated 0"},
    };
    for (const Case& test : cases) {
        Session session;
        ASSERT_NE(session.parse(document(variable("v", 1, test.attributes, test.type))), nullptr);
        fmi2_import_variable_t* v = find(session.fmu, "v");
        const std::string properties =
            std::string(fmi2_base_type_to_string(fmi2_import_get_variable_base_type(v))) + " " +
            fmi2_causality_to_string(fmi2_import_get_causality(v)) + " " +
            fmi2_variability_to_string(fmi2_import_get_variability(v)) + " " +
            fmi2_initial_to_string(fmi2_import_get_initial(v)) + " " +
            std::to_string(fmi2_import_get_variable_has_start(v));
        EXPECT_EQ(properties, test.properties) << test.attributes << test.type;
    }
}

TEST(Variables, KeepTheirStartValuesAndReferences) {
    Session session;
    session.parse(document(
        variable("r", 1, "causality='parameter'", "<Real start='1e-320'/>") +
        variable("i", 2, "causality='parameter' description='d &amp; e'", "<Integer start='-7'/>") +
        variable("b", 3, "causality='parameter'", "<Boolean start='1'/>") +
        variable("s", 4, "causality='parameter'", "<String start='a&#10;b'/>") +
        variable("e", 5, "causality='parameter'", "<Enumeration start='3'/>") +
        "<ScalarVariable name='wrap' valueReference='-1'/>"
        "<ScalarVariable name='dropped' valueReference='x'/>" +
        variable(std::string(10'000, 'n'), 6, "", "<Real/>")));
    fmi2_import_t* fmu = session.fmu;
    EXPECT_EQ(fmi2_import_get_real_variable_start(fmi2_import_get_variable_as_real(find(fmu, "r"))),
              1e-320);
    fmi2_import_variable_t* integer = find(fmu, "i");
    EXPECT_EQ(fmi2_import_get_integer_variable_start(fmi2_import_get_variable_as_integer(integer)),
              -7);
    EXPECT_STREQ(fmi2_import_get_variable_description(integer), "d & e");
    EXPECT_EQ(fmi2_import_get_variable_as_real(integer), nullptr);
    EXPECT_EQ(
        fmi2_import_get_boolean_variable_start(fmi2_import_get_variable_as_boolean(find(fmu, "b"))),
        fmi2_true);
    EXPECT_STREQ(
        fmi2_import_get_string_variable_start(fmi2_import_get_variable_as_string(find(fmu, "s"))),
        "a\nb");
    EXPECT_EQ(fmi2_import_get_enum_variable_start(fmi2_import_get_variable_as_enum(find(fmu, "e"))),
              3);
    EXPECT_EQ(fmi2_import_get_variable_vr(find(fmu, "wrap")), 4294967295U);
    EXPECT_EQ(find(fmu, "dropped"), nullptr);
    EXPECT_NE(find(fmu, std::string(10'000, 'n')), nullptr);
}

TEST(Variables, AreListedInThreeOrdersWithAliasesAndOutliveTheFmuAsAList) {
    Session session;
    session.parse(document(variable("b", 2, "causality='output'", "<Real/>") +
                           variable("a", 2, "", "<Real/>") +
                           variable("B1", 9, "variability='discrete'", "<Boolean/>") +
                           variable("e", 2, "variability='discrete'", "<Enumeration/>") +
                           variable("i", 2, "variability='discrete'", "<Integer/>") +
                           variable("A", 1, "", "<Real/>")));
    EXPECT_THAT(names(session.fmu, 0), ElementsAre("b", "a", "B1", "e", "i", "A"));
    EXPECT_THAT(names(session.fmu, 1), ElementsAre("A", "B1", "a", "b", "e", "i"));
    EXPECT_THAT(names(session.fmu, 2), ElementsAre("A", "b", "a", "e", "i", "B1"));
    EXPECT_EQ(fmi2_import_get_variable_list(session.fmu, 3), nullptr);
    EXPECT_EQ(fmi2_import_get_variable_alias_kind(find(session.fmu, "b")),
              fmi2_variable_is_not_alias);
    EXPECT_EQ(fmi2_import_get_variable_alias_kind(find(session.fmu, "a")), fmi2_variable_is_alias);
    EXPECT_EQ(fmi2_import_get_variable_alias_kind(find(session.fmu, "i")),
              fmi2_variable_is_not_alias);
    fmi2_import_variable_list_t* list = fmi2_import_get_variable_list(session.fmu, 0);
    fmi2_import_free(session.fmu);
    session.fmu = nullptr;
    EXPECT_EQ(fmi2_import_get_variable_list_size(list), 6U);
    fmi2_import_free_variable_list(list);
}

TEST(Variables, ThatContradictEachOtherAreRemoved) {
    const std::string input = "causality='input'";
    const std::string constant = "variability='constant'";
    Session session;
    session.parse(document(variable("in1", 1, input, "<Real start='1'/>") +
                           variable("in2", 1, input, "<Real start='2'/>") +
                           variable("sameNumber", 1, "variability='discrete'", "<Integer/>") +
                           variable("const", 2, constant, "<Real start='1'/>") +
                           variable("varying", 2, "", "<Real/>") +
                           variable("one", 3, constant, "<Real start='1'/>") +
                           variable("two", 3, constant, "<Real start='1'/>")));
    EXPECT_THAT(names(session.fmu, 0), ElementsAre("sameNumber", "one", "two"));
    EXPECT_EQ(find(session.fmu, "in1"), nullptr);
    EXPECT_TRUE(session.hasLine(
        "2 FMI2XML Only one variable among non constant aliases is allowed to have start attribute "
        "(variables: in1 and in2) 4, 4, const enum value: 0"));
    EXPECT_TRUE(session.hasLine(
        "2 FMI2XML Only constants can be aliases with constants (variables: const and varying)"));
    EXPECT_TRUE(session.hasLine("2 FMI2XML Removing incorrect alias variable 'varying'"));
}

TEST(Variables, TakeTheirUnitFromThemselvesOrTheirTypeOnly) {
    Session session;
    session.parse(document(
        variable("none", 1, "", "<Real/>") + variable("own", 2, "", "<Real unit='rad'/>") +
            variable("undeclared", 3, "", "<Real unit='furlong'/>") +
            variable("typed", 4, "", "<Real declaredType='Angle' min='0'/>") +
            variable("both", 5, "", "<Real declaredType='Angle' unit='m'/>") +
            variable("emptied", 6, "", "<Real declaredType='Angle' unit=''/>") +
            variable("shown", 7, "", "<Real unit='m' displayUnit='deg'/>") +
            variable("unknownType", 8, "", "<Real declaredType='Nothing'/>") +
            variable("wrongType", 9, "", "<Real declaredType='Choice'/>"),
        "<UnitDefinitions><Unit name='rad'><DisplayUnit name='deg'/></Unit><Unit name='m'/>"
        "</UnitDefinitions><TypeDefinitions>"
        "<SimpleType name='Angle'><Real unit='rad' displayUnit='deg'/></SimpleType>"
        "<SimpleType name='Choice'><Enumeration/></SimpleType></TypeDefinitions>"));
    const std::vector<std::pair<std::string, std::string>> units{
        {"none", "none"}, {"own", "rad"},          {"undeclared", "furlong"},
        {"typed", "rad"}, {"both", "m"},           {"emptied", "none"},
        {"shown", "m"},   {"unknownType", "none"}, {"wrongType", "none"}};
    for (const auto& [name, unit] : units) {
        EXPECT_EQ(unitOf(session.fmu, name), unit) << name;
    }
    EXPECT_TRUE(session.hasLine(
        "2 FMI2XML Declared type Nothing not found in type definitions. Ignoring."));
    EXPECT_TRUE(
        session.hasLine("2 FMI2XML Declared type Choice does not match variable type. Ignoring."));
}

TEST(Variables, MissingListAndDuplicateNames) {
    Session missing;
    missing.parse(rootStart + slave + structure + rootEnd);
    EXPECT_EQ(fmi2_import_get_variable_list(missing.fmu, 0), nullptr);
    fmi2_import_variable_list_t* list = fmi2_import_get_variable_list(missing.fmu, 1);
    EXPECT_NE(list, nullptr);
    fmi2_import_free_variable_list(list);
    EXPECT_EQ(find(missing.fmu, "x"), nullptr);
    Session twice;
    fmi_import_set_configuration(twice.context, FMI_IMPORT_NAME_CHECK);
    twice.parse(document(variable("x", 1, "", "<Real/>") + variable("x", 2, "", "<Real/>")));
    EXPECT_TRUE(
        twice.hasLine("2 FMI2XML Two variables with the same name x found. This is not allowed."));
    EXPECT_THAT(names(twice.fmu, 0), ElementsAre("x", "x"));
    EXPECT_NE(find(twice.fmu, "x"), nullptr);
}

// Looked up one by one among their likes these would take minutes.
TEST(Variables, ManyOfOneNameAreReadLikeOthers) {
    Session session;
    session.callbacks.log_level = jm_log_level_fatal;
    std::string variables;
    for (int at = 0; at < 300'000; ++at) {
        variables += variable("same", at, "", "<Real/>");
    }
    ASSERT_NE(session.parse(document(variables)), nullptr);
    EXPECT_EQ(fmi2_import_get_variable_vr(find(session.fmu, "same")), 0U);
}

TEST(Variables, HundredThousandAreFoundByName) {
    std::string variables;
    for (int at = 0; at < 100'000; ++at) {
        variables += variable("v[" + std::to_string(at) + "]", at, "", "<Real/>");
    }
    Session session;
    ASSERT_NE(session.parse(document(variables)), nullptr);
    for (int at = 0; at < 100'000; ++at) {
        fmi2_import_variable_t* found = find(session.fmu, "v[" + std::to_string(at) + "]");
        ASSERT_EQ(fmi2_import_get_variable_vr(found), static_cast<unsigned>(at));
    }
    EXPECT_EQ(find(session.fmu, "v[100000]"), nullptr);
}

} // namespace

} // namespace import_test
