/**
 * @file model_slave.h
 * @brief What the slaves of physical models have in common.
 */
#pragma once

#include "example_fmus/slave/slave.h"

#include <cstddef>
#include <optional>
#include <span>

/** A slave whose parameters count from the initialisation on, and whose outputs follow from its inputs
 *  alone until the first step. @p Model is a plain record, so that the slave can offer its state. */
template <typename Model>
class ModelSlave : public Slave {
  public:
    ModelSlave(const Instantiation& instantiation, const VariableCounts& counts, const Model& model)
        : Slave(instantiation, counts),
          remembered{model} {}

    fmi2Status enterInitializationMode() final { return useParameters(); }

    fmi2Status exitInitializationMode() final { return useParameters(); }

    fmi2Status reset() final {
        useStartValues();
        return fmi2OK;
    }

    fmi2Status getReal(References references, fmi2Real* values) final {
        if (remembered.lastStep == 0.0) {
            updateOutputs();
        }
        return Slave::getReal(references, values);
    }

  protected:
    /** Numbers only, so that it is as many bytes as it looks. */
    struct Memory {
        Model model;
        double lastStep = 0.0; ///< [s], 0 before the first
    };

    Memory remembered; ///< Of the model, and of whether there was a step.

  private:
    /** Gives all variables and the memory the values of a new instance. */
    virtual void useStartValues() = 0;

    /** Hands the parameters to the model.
     *  @return fmi2Error, after a message, when one makes no sense */
    virtual fmi2Status useParameters() = 0;

    /** Calculates the outputs before the first step. */
    virtual void updateOutputs() = 0;

    std::optional<std::span<std::byte>> memory() final { return bytesOf(remembered); }
};
