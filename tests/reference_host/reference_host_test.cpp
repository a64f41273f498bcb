#include "host/coupled_condition.h"
#include "host/model_setup.h"
#include "host/options.h"
#include "host/output_result.h"
#include "host/parameters.h"
#include "host/physical_quantity.h"
#include "host/result.h"
#include "host/solution.h"
#include "host/solution_settings.h"
#include "host/solver.h"
#include "host/solver_settings.h"
#include "reference_host/log_sink.h"
#include "reference_host/simulation.h"
#include "reference_host/tuple_table.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

/// A solver with nothing of its own, to look at what every solver inherits.
class BareSolver : public Solver {
  public:
    void printBanner() override {}

    void parseCommandLine(ModelManager* modelManager) override { setModelManager(modelManager); }

    void setUp(ModelManager* modelManager) override { setModelManager(modelManager); }

    void applyInitialInputs(int) override {}

    void start() override {}

    void writeInitialOutputs(int) override {}

    void applyInputs(double) override {}

    void solveTo(double) override {}

    void writeOutputs(double) override {}

    void terminate() override {}
};

std::vector<std::string> split(const char* commandLine) {
    BareSolver solver;
    int argc = -1;
    char** argv = nullptr;
    solver.convertToArgcArgv(commandLine, argc, argv);
    EXPECT_EQ(argv[argc], nullptr);
    return {argv, argv + argc};
}

TEST(CommandLine, IsSplitAtBlanksOutsideQuotes) {
    using Arguments = std::vector<std::string>;
    EXPECT_EQ(split(nullptr), Arguments());
    EXPECT_EQ(split(" \t "), Arguments());
    EXPECT_EQ(split("  tyre.fmu\t-nolocal \r\n-fmutype FTIRE"),
              (Arguments{"tyre.fmu", "-nolocal", "-fmutype", "FTIRE"}));
    EXPECT_EQ(split(R"("C:\my models\tyre.fmu" -parameter name "")"),
              (Arguments{"C:\\my models\\tyre.fmu", "-parameter", "name", ""}));
    EXPECT_EQ(split(R"(C:\"my models"\tyre.fmu it's)"),
              (Arguments{"C:\\my models\\tyre.fmu", "it's"}));
    EXPECT_EQ(split("a \"never closed "), (Arguments{"a", "never closed "}));
}

TEST(CommandLine, BelongsToTheSolverUntilTheNextOne) {
    BareSolver first;
    BareSolver second;
    int argc = 0;
    char** argv = nullptr;
    int otherArgc = 0;
    char** otherArgv = nullptr;
    first.convertToArgcArgv("one two", argc, argv);
    second.convertToArgcArgv("three", otherArgc, otherArgv);
    EXPECT_STREQ(argv[1], "two");

    std::vector<std::string> lines;
    reference_host::setLogSink(
        [&](Logger::Level, const std::string& text) { lines.push_back(text); });
    first.debugPrintArgcArgv(argc, argv);
    reference_host::setLogSink({});
    EXPECT_EQ(lines, (std::vector<std::string>{"argv[0]: one", "argv[1]: two"}));
}

TEST(Solver, KnowsNothingBeforeItHasAModelManager) {
    BareSolver solver;
    EXPECT_EQ(solver.getModelManager(), nullptr);
    EXPECT_EQ(solver.getSolverSettings(), nullptr);
    EXPECT_EQ(solver.getSolutionSettings(), nullptr);
    EXPECT_EQ(solver.getMyModel(), nullptr);
    EXPECT_EQ(solver.getModelSetup(), nullptr);
}

TEST(Solver, FindsTheRunsSettingsBehindItsModelManager) {
    reference_host::Simulation simulation;
    simulation.setWorkingDirectory("/run");
    simulation.setCommandLine("tyre.fmu");
    simulation.setModelFilePath("/model/car.xml");
    BareSolver solver;
    solver.setUp(simulation.modelManager());

    Parameters* own = solver.getSolverSettings()->getSolverSettingParameters();
    EXPECT_EQ(own->getStringParameter(1), "/run");
    EXPECT_EQ(own->getStringParameter(3), "tyre.fmu");
    EXPECT_EQ(own->getStringParameter(2), "") << "the run's model file is not this solver's";

    Parameters* shared = solver.getSolutionSettings()->getParameters();
    EXPECT_EQ(shared,
              solver.getModelManager()->getSolution()->getSolutionSettings()->getParameters());
    EXPECT_EQ(shared->getStringParameter(2), "/model/car.xml");
    EXPECT_NE(solver.getMyModel(), nullptr);

    EXPECT_EQ(simulation.failureCode(), 0);
    shared->setParameter(11, 4);
    EXPECT_EQ(simulation.failureCode(), 4);
}

TEST(Solver, SeesEverySwitchOfTheRun) {
    reference_host::Simulation simulation;
    BareSolver solver;
    solver.setUp(simulation.modelManager());
    Options* own = solver.getSolverSettings()->getSolverSettingOptions();
    SolutionSettings* shared = solver.getSolutionSettings();
    EXPECT_FALSE(own->getOption(1));
    EXPECT_FALSE(shared->getOptions()->getOption(2));
    EXPECT_EQ(shared->getParameters()->getIntParameter(12), 0);

    simulation.setCoupled(true);
    EXPECT_TRUE(own->getOption(1));
    EXPECT_FALSE(shared->getOptions()->getOption(1)) << "the stores count on their own";
    simulation.setStepSkipOption(true);
    EXPECT_TRUE(shared->getOptions()->getOption(2));
    simulation.setStepSkipParameter(true);
    EXPECT_NE(shared->getParameters()->getIntParameter(12), 0);
}

TEST(ModelSetup, HandsOutWhatTheSimulationAddedAndKeepsItInPlace) {
    reference_host::Simulation simulation;
    TupleArray<double>& height = simulation.addCoupledCondition("height", 1);
    simulation.addCoupledCondition("F", 3);
    TupleArray<double>& pressure = simulation.addOutputResult("P", "PressureGlobal", 2);
    BareSolver solver;
    solver.setUp(simulation.modelManager());
    const ModelSetup* setup = solver.getModelSetup();

    ASSERT_EQ(setup->getNumberOfCoupledConditions(), 2U);
    EXPECT_EQ(setup->getCoupledCondition(1)->getName(), "F");
    EXPECT_EQ(setup->getCoupledCondition(1)->getResult()->getPhysicalQuantity()->getSize(), 3);
    EXPECT_EQ(setup->getCoupledCondition(0)->getResult()->getValues(), &height);
    EXPECT_THROW((void)setup->getCoupledCondition(2), std::out_of_range);

    ASSERT_EQ(setup->getNumberOfOutputResults(), 1U);
    const OutputResult* output = setup->getOutputResult(0);
    EXPECT_EQ(output->getName(), "P");
    EXPECT_EQ(output->getResult()->getPhysicalQuantity()->getName(), "PressureGlobal");
    output->getResult()->getValues()->setValue(0, 2, 1.5);
    EXPECT_EQ(pressure.getValue(0, 2), 1.5);
}

TEST(TupleTable, GrowsToFitWhatIsWritten) {
    reference_host::TupleTable table;
    EXPECT_EQ(table.getValue(0, 0), 0.0);
    table.setValue(0, 2, 3.0);
    table.setValue(2, 0, 7.0);
    EXPECT_EQ(table.getValue(0, 2), 3.0);
    EXPECT_EQ(table.getValue(0, 0), 0.0);
    EXPECT_EQ(table.getValue(1, 5), 0.0);
    EXPECT_EQ(table.getValue(2, 0), 7.0);
    EXPECT_THROW(table.setValue(-1, 0, 1.0), std::out_of_range);
    EXPECT_THROW((void)table.getValue(0, -1), std::out_of_range);
}

} // namespace
