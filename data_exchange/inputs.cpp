#include "data_exchange/inputs.h"

#include "data_exchange/element_name.h"
#include "host/coupled_condition.h"
#include "host/model_setup.h"
#include "host/physical_quantity.h"
#include "host/required.h"
#include "host/result.h"
#include "host/tuple_array.h"

#include <cstddef>
#include <string>

namespace data_exchange {

using host::required;

namespace {

std::int32_t setVector(FmiToolsInstance* fmu, const std::string& name,
                       const TupleArray<double>& values) {
    ElementName element(name);
    std::int32_t status = 0;
    for (int component = 0; component < vectorSize && status >= 0; ++component) {
        const double value = values.getValue(0, component);
        status = fmiToolsSetRealVariableValue(fmu, element.of(component), value);
    }
    return status;
}

std::int32_t setInput(FmiToolsInstance* fmu, const CoupledCondition& condition, bool arrayInputs) {
    const Result& result = required(condition.getResult(), "result of a coupled condition");
    const std::string name = condition.getName();
    const TupleArray<double>& values =
        required(result.getValues(), "values of a coupled condition");
    if (arrayInputs &&
        required(result.getPhysicalQuantity(), "quantity of a coupled condition").getSize() != 1) {
        return setVector(fmu, name, values);
    }
    return fmiToolsSetRealVariableValue(fmu, name.c_str(), values.getValue(0, 0));
}

} // namespace

std::int32_t setFmuInputs(FmiToolsInstance* fmu, bool arrayInputs, const ModelSetup* modelSetup) {
    const ModelSetup& conditions = required(modelSetup, "model set-up");
    const std::size_t count = conditions.getNumberOfCoupledConditions();
    std::int32_t status = 0;
    for (std::size_t i = 0; i < count && status >= 0; ++i) {
        const auto* condition = conditions.getCoupledCondition(i);
        status = setInput(fmu, required(condition, "coupled condition"), arrayInputs);
    }
    return status;
}

} // namespace data_exchange
