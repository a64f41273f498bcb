#pragma once

#include "bench/workload.h"
#include "example_fmus/fmi2_functions.h"
#include "platform/shared_library.h"

namespace bench {

/// An initialised slave of an unpacked FMU, called without anything in between.
class BareFmu {
  public:
    /// @throws std::runtime_error when the binary does not load or instantiate.
    explicit BareFmu(const Workload& workload);
    ~BareFmu();
    BareFmu(const BareFmu&) = delete;
    BareFmu& operator=(const BareFmu&) = delete;
    BareFmu(BareFmu&&) = delete;
    BareFmu& operator=(BareFmu&&) = delete;

    void set(unsigned reference, double value) { setReal_(slave_, &reference, 1, &value); }

    double get(unsigned reference) {
        double value = 0.0;
        getReal_(slave_, &reference, 1, &value);
        return value;
    }

    void step(double from, double size) { doStep_(slave_, from, size, fmi2True); }

  private:
    template <typename Function>
    Function* function(const char* name);

    platform::SharedLibrary library_;
    fmi2CallbackFunctions callbacks_{};
    decltype(&fmi2SetReal) setReal_ = nullptr;
    decltype(&fmi2GetReal) getReal_ = nullptr;
    decltype(&fmi2DoStep) doStep_ = nullptr;
    fmi2Component slave_ = nullptr;
};

} // namespace bench
