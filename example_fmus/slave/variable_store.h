/**
 * @file variable_store.h
 * @brief The values of a slave's variables of one base type, indexed by value reference.
 */
#pragma once

#include "example_fmus/fmi2_functions.h"

#include <algorithm>
#include <span>
#include <type_traits>
#include <vector>

using References = std::span<const fmi2ValueReference>;

template <typename Value>
class VariableStore {
  public:
    explicit VariableStore(std::size_t count) : values_(count) {}

    Value& operator[](std::size_t reference) { return values_[reference]; }

    const Value& operator[](std::size_t reference) const { return values_[reference]; }

    /** All of them, in the order of their references. */
    std::span<Value> all() { return values_; }

    bool knows(References references) const {
        return std::all_of(references.begin(), references.end(),
                           [this](auto reference) { return reference < values_.size(); });
    }

    /** Copies the referenced values out. @return false, with nothing copied, when a reference is
     *  not one of this store. */
    template <typename Target>
    bool get(References references, Target* targets) const {
        if (!knows(references)) {
            return false;
        }
        for (std::size_t i = 0; i < references.size(); ++i) {
            if constexpr (std::is_same_v<Target, fmi2String>) {
                targets[i] = values_[references[i]].c_str();
            } else {
                targets[i] = values_[references[i]];
            }
        }
        return true;
    }

    /** Copies the values in. @return false, with nothing changed, when a reference is not one of
     *  this store. */
    template <typename Source>
    bool set(References references, const Source* sources) {
        if (!knows(references)) {
            return false;
        }
        for (std::size_t i = 0; i < references.size(); ++i) {
            values_[references[i]] = sources[i];
        }
        return true;
    }

  private:
    std::vector<Value> values_;
};
