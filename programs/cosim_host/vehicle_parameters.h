#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace cosim_host {

/// A quarter of a car, in SI units. The tyre's values say where the run begins and which steps it
/// settles with; the forces are those of the solver's tyre.
struct QuarterCarParameters {
    double bodyMass = 400.0;          ///< kg
    double wheelMass = 40.0;          ///< kg
    double springStiffness = 25000.0; ///< N/m
    double damping = 1800.0;          ///< N.s/m
    double tyreRadius = 0.32;         ///< m
    double tyreStiffness = 200000.0;  ///< N/m
    double tyreDamping = 150.0;       ///< N.s/m
};

/// The two equal wheels and suspensions of an axle, in SI units.
struct AxleParameters {
    double distance = 1.3;            ///< From the centre of mass along the car, m
    double track = 1.5;               ///< From wheel to wheel, m
    double wheelMass = 40.0;          ///< Of one, kg
    double springStiffness = 25000.0; ///< Of one, N/m
    double damping = 1800.0;          ///< Of one, N.s/m
};

/// A whole car, in SI units; the tyre's values as for a quarter of one.
struct CarParameters {
    double bodyMass = 1600.0;     ///< kg
    double rollInertia = 550.0;   ///< Of the body about the forward axis, kg.m2
    double pitchInertia = 2400.0; ///< Of the body about the leftward axis, kg.m2
    AxleParameters front;
    AxleParameters rear;
    double tyreRadius = 0.32;        ///< m
    double tyreStiffness = 200000.0; ///< N/m
    double tyreDamping = 150.0;      ///< N.s/m
};

/// A value that a vehicle's file can give.
struct VehicleParameter {
    std::string_view name;
    std::string_view unit; ///< That of `value`; one without a prefix.
    double* value = nullptr;
    bool mayBeZero = false;
};

/// The values of `parameters`, which must outlive them.
std::vector<VehicleParameter> parametersOf(QuarterCarParameters& parameters);
std::vector<VehicleParameter> parametersOf(CarParameters& parameters);

/// Reads a vehicle's file: a line `name = value unit` for each value that is not to stay as it is,
/// in any of the units of its quantity ("25 kN/m", "25 N/mm"); what follows a "#" is a remark.
///
/// @throws program_support::InputError when the file cannot be read as such; with the line.
void readVehicle(const std::string& path, const std::vector<VehicleParameter>& parameters);

} // namespace cosim_host
