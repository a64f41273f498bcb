// fmi2DoStep stands alone so that a slave can be built that lacks it.
#include "example_fmus/slave/forwarding.h"

fmi2Status fmi2DoStep(fmi2Component component, fmi2Real currentCommunicationPoint,
                      fmi2Real communicationStepSize,
                      fmi2Boolean noSetFMUStatePriorToCurrentPoint) {
    return forward(component, [=](Slave& slave) {
        return slave.doStep({currentCommunicationPoint, communicationStepSize,
                             noSetFMUStatePriorToCurrentPoint != fmi2False});
    });
}
