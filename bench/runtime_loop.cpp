#include "bench/step_loop.h"
#include "fmi_tools.h"
#include "platform/files.h"
#include "platform/path_style.h"

#include <stdexcept>

namespace bench {

namespace {

struct CleanUp {
    void operator()(FmiToolsInstance* instance) const { fmiToolsCleanup(instance); }
};

std::string scriptDirectory(const std::filesystem::path& directory) {
    return platform::withTrailingSeparator(platform::nativePaths(),
                                           platform::narrowPath(directory));
}

class RuntimeLoop : public StepLoop {
  public:
    RuntimeLoop(const Workload& workload, const std::filesystem::path& directory)
        : workload_(workload),
          instance_(fmiToolsLoadFmu(platform::narrowPath(workload.archive).c_str(),
                                    platform::narrowPath(directory / "runtime").c_str(),
                                    scriptDirectory(directory).c_str())) {
        if (!instance_) {
            throw std::runtime_error("Cannot load " + platform::narrowPath(workload.archive));
        }
        const auto file = [&](const char* name) { return platform::narrowPath(directory / name); };
        fmiToolsSetLogFile(instance_.get(), file("runtime.out").c_str());
        requireSuccess(fmiToolsSetResultsFile(instance_.get(), file("runtime.csv").c_str()));
        requireSuccess(fmiToolsInitialize(instance_.get()));
    }

    void step(double time) override {
        for (std::size_t i = 0; i < workload_.inputs.size(); ++i) {
            requireSuccess(fmiToolsSetRealVariableValue(
                instance_.get(), workload_.inputs[i].name.c_str(), inputValue(i, time)));
        }
        requireSuccess(fmiToolsSimulateToT(instance_.get(), time));
        for (const Variable& output : workload_.outputs) {
            double value = 0.0;
            requireSuccess(
                fmiToolsGetRealVariableValue(instance_.get(), output.name.c_str(), &value));
        }
    }

  private:
    const Workload& workload_;
    std::unique_ptr<FmiToolsInstance, CleanUp> instance_;
};

} // namespace

std::unique_ptr<StepLoop> makeRuntimeLoop(const Workload& workload,
                                          const std::filesystem::path& directory) {
    return std::make_unique<RuntimeLoop>(workload, directory);
}

} // namespace bench
