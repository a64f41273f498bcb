#pragma once

#include <fmilib.h>
#include <string>

namespace fmu_runtime {

/// The FMU as FMI Library holds it: import context, model description, binary and the one slave.
///
/// FMI Library passes calls on to the binary whether or not there is a slave, so every call that
/// needs one is refused here with status Fatal when the instantiation failed. What a call answers
/// other than OK is told on standard error by FMI's name of the status.
///
/// An exception that leaves a function of the FMU ends with the call and is its failure: nothing of
/// it is looked at, and nothing of it is left when the binary, which may hold its type, is
/// unloaded.
class Slave {
  public:
    Slave() = default;

    ~Slave() { release(); }

    Slave(const Slave&) = delete; // FMI Library keeps the address of the callbacks record.
    Slave& operator=(const Slave&) = delete;
    Slave(Slave&&) = delete;
    Slave& operator=(Slave&&) = delete;

    /// Unpacks the archive and reads the model description. False unless it is FMI 2.0 and not
    /// Model Exchange only.
    bool open(const std::string& fmuPath, const std::string& unpackDirectory,
              jm_logger_f libraryLogger);

    /// Loads the binary and hands it the callbacks (FMI 2.0 section 2.1.5).
    jm_status_enu_t loadBinary(const fmi2_callback_functions_t& callbacks);

    /// fmi2Instantiate for Co-Simulation, not visible, with the library's own resource location.
    jm_status_enu_t instantiate(const char* instanceName);

    /// Terminates and frees the slave, then everything of FMI Library; results are ignored. Does
    /// nothing the second time.
    void release();

    /// Whether the FMU's library is in the process although it was released: other instances have it
    /// loaded, or it does not let itself be unloaded.
    [[nodiscard]] bool isCodeLeft() const;

    /// The imported model description; null before open() succeeded.
    [[nodiscard]] fmi2_import_t* fmu() const { return fmu_; }

    [[nodiscard]] const char* generationTool() const;

    /// Whether a process may have only one instance of the FMU.
    [[nodiscard]] bool isOnlyOncePerProcess() const;

    /// What tells the FMU from others: its model identifier and its GUID.
    [[nodiscard]] std::string identity() const;

    /// The variable of a name, or null.
    [[nodiscard]] fmi2_import_variable_t* find(const char* name) const;

    fmi2_status_t setupExperiment(double startTime);
    fmi2_status_t enterInitializationMode();
    fmi2_status_t exitInitializationMode();
    fmi2_status_t doStep(double currentCommunicationPoint, double communicationStepSize);

    fmi2_status_t set(fmi2_value_reference_t reference, double value);
    fmi2_status_t set(fmi2_value_reference_t reference, int value);
    fmi2_status_t set(fmi2_value_reference_t reference, const char* value);
    fmi2_status_t get(fmi2_value_reference_t reference, double& value);
    fmi2_status_t get(fmi2_value_reference_t reference, int& value);
    fmi2_status_t get(fmi2_value_reference_t reference, const char*& value);

  private:
    template <typename Call>
    fmi2_status_t statusOf(const char* function, Call call);

    jm_callbacks libraryCallbacks_{};
    fmi_import_context_t* context_ = nullptr;
    fmi2_import_t* fmu_ = nullptr;
    bool instantiated_ = false;
    std::string binaryPath_;
};

} // namespace fmu_runtime
