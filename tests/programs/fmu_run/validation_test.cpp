#include "support/archive_writer.h"
#include "support/run_program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

/// A line for each thing that can be wrong, counted from 1.
const std::string good = R"(<fmiModelDescription fmiVersion="2.0" modelName="m" guid="g">
<CoSimulation modelIdentifier="m"/>
<UnitDefinitions><Unit name="rad"><DisplayUnit name="deg"/></Unit></UnitDefinitions>
<TypeDefinitions><SimpleType name="Angle"><Real unit="rad" displayUnit="deg" min="-4"/></SimpleType>
<SimpleType name="Mode"><Enumeration><Item name="off" value="1"/></Enumeration></SimpleType></TypeDefinitions>
<DefaultExperiment startTime="0" stopTime="1" stepSize="0.1"/>
<ModelVariables>
<ScalarVariable name="gain" valueReference="0" causality="parameter" variability="fixed"><Real start="1" max="2"/></ScalarVariable>
<ScalarVariable name="twice" valueReference="1" causality="calculatedParameter" variability="fixed"><Real/></ScalarVariable>
<ScalarVariable name="angle" valueReference="2" causality="input"><Real declaredType="Angle" start="0"/></ScalarVariable>
<ScalarVariable name="x" valueReference="3" causality="output"><Real/></ScalarVariable>
<ScalarVariable name="rate" valueReference="4"><Real derivative="4"/></ScalarVariable>
<ScalarVariable name="copy" valueReference="3"><Real/></ScalarVariable>
<ScalarVariable name="mode" valueReference="0" causality="input" variability="discrete"><Enumeration declaredType="Mode" start="1"/></ScalarVariable>
<ScalarVariable name="count" valueReference="1" causality="output" variability="discrete"><Integer/></ScalarVariable>
<ScalarVariable name="pi" valueReference="5" variability="constant"><Real start="3"/></ScalarVariable>
</ModelVariables>
<ModelStructure><Outputs>
<Unknown index="4"/>
<Unknown index="8"/>
</Outputs><Derivatives>
<Unknown index="5"/>
</Derivatives><InitialUnknowns>
<Unknown index="2"/>
<Unknown index="4"/>
<Unknown index="5"/>
<Unknown index="8"/>
</InitialUnknowns></ModelStructure>
</fmiModelDescription>)";

/// What `fmu_run --validate` says about a model description without a library.
std::string validated(const std::string& description) {
    const test_support::TemporaryDirectory directory;
    test_support::writeArchive(directory / "m.fmu", {{"modelDescription.xml", description}});
    const auto result =
        test_support::runProgram(test_support::programPath("fmu_run"), {"--validate", "m.fmu"},
                                 {.workingDirectory = directory.path()});
    EXPECT_EQ(result.exitStatus, 1);
    return result.output;
}

} // namespace

TEST(Validation, NoticesWhatIsWrongInAModelDescriptionAndWhere) {
    struct Case {
        std::string from; ///< What is replaced in the good one.
        std::string to;
        int line;
        std::string finding;
    };

    const std::vector<Case> cases{
        {R"(name="copy")", R"(name="x")", 13, "variable 'x': the variable of line 11 has the same"},
        {R"(start="1" max="2")", R"(start="3" max="2")", 8,
         "variable 'gain': its start '3' is above its max '2'"},
        {R"(start="1" max="2")", R"(start="1" max="2" min="2.5")", 8,
         "variable 'gain': its min '2.5' is above its max '2'"},
        {R"("Angle" start="0")", R"("Angle" start="-5")", 10,
         "variable 'angle': its min '-4' is above its start '-5'"},
        {R"("Mode" start="1")", R"("Mode" start="1" min="2")", 14,
         "variable 'mode': its min '2' is above its start '1'"},
        {R"("Mode" start="1")", R"("Mode")", 14, "variable 'mode': it needs a start value"},
        {R"(causality="output"><Real/>)", R"(causality="output"><Real start="0"/>)", 11,
         "variable 'x': it must not have a start value"},
        {R"(causality="input">)", R"(causality="input" initial="exact">)", 10,
         "variable 'angle': initial exact does not go with causality input"},
        {R"(causality="parameter" variability="fixed")", R"(causality="parameter")", 8,
         "variable 'gain': causality parameter and variability continuous do not go together"},
        {R"(causality="output">)", R"(causality="result">)", 11,
         "variable 'x': its causality, variability or initial is none that FMI 2.0 has"},
        {R"("output" variability="discrete")", R"("output")", 15,
         "variable 'count': variability continuous, also where none is told, is for Reals only"},
        {R"("3"><Real/>)", R"("3">)", 13, "variable 'copy': it has no type"},
        {R"(start="1" max)", R"(unit="furlong" start="1" max)", 8,
         "variable 'gain': its unit 'furlong' is not defined"},
        {R"("Angle"><Real unit="rad")", R"("Angle"><Real unit="Rad")", 4,
         "type 'Angle': its unit 'Rad' is not defined"},
        {R"(displayUnit="deg")", R"(displayUnit="grad")", 4,
         "type 'Angle': its displayUnit 'grad' is not defined"},
        {R"(declaredType="Mode")", R"(declaredType="Kind")", 14,
         "variable 'mode': its declaredType 'Kind' is not defined"},
        {R"(declaredType="Mode")", R"(declaredType="Angle")", 14,
         "variable 'mode': its declaredType 'Angle' is of type Real"},
        {R"(derivative="4")", R"(derivative="10")", 12,
         "variable 'rate': its derivative '10' is the index of no variable"},
        {R"(derivative="4")", R"(derivative="8")", 12,
         "variable 'rate': its derivative refers to 'count', which is no continuous Real"},
        {R"("3"><Real/>)", R"("3"><Real unit="rad"/>)", 13,
         "variable 'copy': it has the value reference of 'x', which has another unit"},
        {R"(Reference="5")", R"(Reference="4")", 16,
         "variable 'pi': it has the value reference of 'rate', and only one of the two is "
         "constant"},
        {R"("1" causality="output")", R"("0" causality="output")", 15,
         "variable 'count': it has the value reference of 'mode', which is of type Enumeration"},
        {R"("2" causality="input")", R"("0" causality="input")", 10,
         "variable 'angle': it has the value reference of 'gain', which has another unit"},
        {R"(="1" causality="calculatedParameter" variability="fixed"><Real/>)",
         R"(="0" causality="parameter" variability="fixed"><Real start="1"/>)", 9,
         "variable 'twice': it has the value reference of 'gain', which has a start value, too"},
        {R"(="4"><Real derivative="4"/>)", R"(="5" variability="constant"><Real start="2"/>)", 16,
         "variable 'pi': it has the value reference of 'rate', a constant of another value"},
        {"<Outputs>\n<Unknown index=\"4\"/>", "<Outputs>\n", 11,
         "variable 'x': it is missing in ModelStructure/Outputs"},
        {"<Unknown index=\"8\"/>\n</Outputs>", "<Unknown index=\"4\"/>\n</Outputs>", 20,
         "variable 'x': it is listed in ModelStructure/Outputs twice"},
        {"<Unknown index=\"8\"/>\n</Outputs>", "<Unknown index=\"9\"/>\n</Outputs>", 20,
         "variable 'pi': it is listed in ModelStructure/Outputs and must not be"},
        {"<Unknown index=\"8\"/>\n</Outputs>", "<Unknown index=\"10\"/>\n</Outputs>", 20,
         "ModelStructure/Outputs: its index '10' is that of no variable"},
        {"<Derivatives>\n<Unknown index=\"5\"/>", "<Derivatives>\n<Unknown index=\"4\"/>", 22,
         "variable 'x': it is listed in ModelStructure/Derivatives and must not be"},
        {R"(<Unknown index="2"/>)", "", 9,
         "variable 'twice': it is missing in ModelStructure/InitialUnknowns"},
        {"<Unknown index=\"5\"/>\n<Unknown", "<Unknown", 12,
         "variable 'rate': it is missing in ModelStructure/InitialUnknowns"},
        {R"(<Unknown index="2"/>)", R"(<Unknown index="3"/>)", 24,
         "variable 'angle': it is listed in ModelStructure/InitialUnknowns and must not be"},
        {"<Unknown index=\"4\"/>\n<Unknown index=\"5\"/>",
         "<Unknown index=\"5\"/>\n<Unknown index=\"4\"/>", 26,
         "variable 'x': it is listed in ModelStructure/InitialUnknowns behind one of a higher"},
        {R"(stepSize="0.1")", R"(stepSize="0.3")", 6,
         "the default experiment: its stepSize '0.3' does not divide the time up to '1'"},
    };
    for (const auto& [from, to, line, finding] : cases) {
        std::string description = good;
        ASSERT_NE(description.find(from), std::string::npos) << from;
        description.replace(description.find(from), from.size(), to);
        EXPECT_THAT(validated(description), HasSubstr("error: line " + std::to_string(line) +
                                                      " of modelDescription.xml: " + finding));
    }
}

TEST(Validation, FindsNothingWrongInAModelDescriptionThatIsRight) {
    std::string variableStep = good;
    const std::string steps = R"(stepSize="0.1")";
    variableStep.replace(variableStep.find(steps), steps.size(), R"(stepSize="0.3")");
    variableStep.replace(variableStep.find("/>"), 2,
                         R"( canHandleVariableCommunicationStepSize="true"/>)");
    for (const std::string& description : {good, variableStep}) {
        EXPECT_THAT(validated(description), Not(HasSubstr("modelDescription.xml")));
    }
}

TEST(Validation, ListsTheFirstThousandOfWhatACraftedFileHasWrong) {
    std::string unknownElements = good;
    std::string doubledOutputs = good;
    for (int count = 0; count < 1234; ++count) {
        unknownElements.insert(unknownElements.rfind("</"), "<a/>");
        doubledOutputs.insert(doubledOutputs.find("</Outputs>"), "<Unknown index=\"4\"/>");
    }
    EXPECT_THAT(validated(unknownElements),
                AllOf(HasSubstr("and 234 more of this kind"), HasSubstr("1 error, 1234 warnings")));
    EXPECT_THAT(validated(doubledOutputs), AllOf(HasSubstr("and 234 more of this kind"),
                                                 HasSubstr("1235 errors, 0 warnings")));
}
