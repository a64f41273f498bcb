// The slave of every workload: a model that costs next to nothing, so that what is measured is what
// stands around it. PARAMETERS, INPUTS, OUTPUTS and LOCALS say how many Reals of each kind there
// are; their value references follow one another in this order.
#include "example_fmus/slave/slave.h"

namespace {

constexpr std::size_t firstInput = PARAMETERS;
constexpr std::size_t firstOutput = firstInput + INPUTS;
constexpr std::size_t variableCount = firstOutput + OUTPUTS + LOCALS;

class WorkloadSlave : public Slave {
  public:
    explicit WorkloadSlave(const Instantiation& instantiation)
        : Slave(instantiation, {.reals = variableCount}) {
        // Numbers with all their digits, which is what most numbers in a results file have.
        for (std::size_t i = 0; i != PARAMETERS; ++i) {
            reals[i] = 1.0e5 / (static_cast<double>(i) + 3.0);
        }
    }

    fmi2Status reset() override { return fmi2OK; }

    fmi2Status getReal(References references, fmi2Real* values) override {
        for (const auto reference : references) {
            *values++ = reals[reference];
        }
        return fmi2OK;
    }

    fmi2Status setReal(References references, const fmi2Real* values) override {
        for (const auto reference : references) {
            reals[reference] = *values++;
        }
        return fmi2OK;
    }

    /// Each output follows an input with a delay.
    fmi2Status doStep(const CommunicationStep& step) override {
        for (std::size_t i = 0; i != OUTPUTS && INPUTS != 0; ++i) {
            double& output = reals[firstOutput + i];
            output += step.size * (reals[firstInput + i % inputCount] - output);
        }
        return fmi2OK;
    }

  private:
    static constexpr std::size_t inputCount = INPUTS != 0 ? INPUTS : 1;
};

} // namespace

std::unique_ptr<Slave> makeSlave(const Instantiation& instantiation) {
    return guidMatches(instantiation, FMU_GUID) ? std::make_unique<WorkloadSlave>(instantiation)
                                                : nullptr;
}
