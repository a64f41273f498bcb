#include "data_exchange/outputs.h"

#include "data_exchange/element_name.h"
#include "host/model_setup.h"
#include "host/output_result.h"
#include "host/physical_quantity.h"
#include "host/required.h"
#include "host/result.h"
#include "host/tuple_array.h"

#include <cstddef>
#include <string>

namespace data_exchange {

using host::required;

namespace {

/// Reads FMU outputs into the host's tables. The buffer lives as long as one transfer and keeps the
/// value read last.
class OutputReader {
  public:
    OutputReader(FmiToolsInstance* fmu, bool asArrays) : fmu_(fmu), asArrays_(asArrays) {}

    std::int32_t read(const OutputResult& output) {
        const Result& result = required(output.getResult(), "result of an output result");
        TupleArray<double>& values = required(result.getValues(), "values of an output result");
        const PhysicalQuantity& quantity =
            required(result.getPhysicalQuantity(), "quantity of an output result");
        const bool scalar = quantity.getName() == "PressureGlobal";
        const std::string name = output.getName();
        return asArrays_ ? readElements(name, scalar ? 1 : vectorSize, values)
                         : readComponent(name.c_str(), 0, values);
    }

  private:
    std::int32_t readElements(const std::string& name, int count, TupleArray<double>& values) {
        ElementName element(name);
        std::int32_t status = 0;
        for (int component = 0; component < count && status >= 0; ++component) {
            status = readComponent(element.of(component), component, values);
        }
        return status;
    }

    std::int32_t readComponent(const char* name, int component, TupleArray<double>& values) {
        const std::int32_t status = fmiToolsGetRealVariableValue(fmu_, name, &buffer_);
        if (status >= 0) {
            values.setValue(0, component, buffer_);
        }
        return status;
    }

    FmiToolsInstance* fmu_;
    bool asArrays_;
    double buffer_ = 0.0;
};

} // namespace

std::int32_t getFmuOutputs(FmiToolsInstance* fmu, bool asArrays, const ModelSetup* modelSetup) {
    const ModelSetup& outputs = required(modelSetup, "model set-up");
    const std::size_t count = outputs.getNumberOfOutputResults();
    OutputReader reader(fmu, asArrays);
    std::int32_t status = 0;
    for (std::size_t i = 0; i < count && status >= 0; ++i) {
        status = reader.read(required(outputs.getOutputResult(i), "output result"));
    }
    return status;
}

} // namespace data_exchange
