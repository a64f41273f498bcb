#pragma once

#include "programs/cosim_host/car.h"
#include "programs/cosim_host/host_model.h"
#include "programs/cosim_host/road.h"
#include "programs/cosim_host/settling.h"
#include "programs/cosim_host/tyre_exchange.h"
#include "programs/cosim_host/vehicle_parameters.h"

#include <array>
#include <string>
#include <vector>

namespace cosim_host {

/// The wheels' names in signals and folders, in their order.
inline constexpr std::array<const char*, wheelCount> wheelNames = {"frontLeft", "frontRight",
                                                                   "rearLeft", "rearRight"};

/// The road under the wheels of each side.
struct Tracks {
    Road left;
    Road right;
};

/// A car that runs straight ahead at constant speed on four tyres of solvers. The front wheels have
/// come as far as speed times time; the rear ones are behind by the wheelbase.
///
/// Over a communication step the tyres' forces are held: the means of what the solvers left at its
/// begin and at its end.
class CarModel : public HostModel {
  public:
    CarModel(const std::array<TyreExchange, wheelCount>& tyres, const CarParameters& parameters,
             Tracks tracks, double speed);

    void impose(double time) override;
    void advance(double from, double to) override;
    [[nodiscard]] std::vector<Signal> signals() const override;

    /// As of the quarter car: one line about a communication step (seconds) that is too long.
    [[nodiscard]] std::string warningAbout(double stepSize) const;

  private:
    [[nodiscard]] PerWheel forces() const;
    [[nodiscard]] double distance(std::size_t wheel, double time) const;
    [[nodiscard]] const Road& road(std::size_t wheel) const;
    [[nodiscard]] StepMatrix stepMatrix(double stepSize) const;

    std::array<TyreExchange, wheelCount> tyres_;
    CarParameters parameters_;
    Tracks tracks_;
    double speed_;
    PerWheel forcesAtBegin_{}; ///< Of the tyres, where the communication step begins, in N.
    PerWheel roadHeights_{};   ///< At the last communication point, in m.
    Car car_;
};

} // namespace cosim_host
