/**
 * @file slave_library.h
 * @brief What the scripted slave's binary knows beyond a single instance.
 */
#pragma once

#include "example_fmus/slave/slave.h"
#include "tests/fmus/scripted/script.h"

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

/** Lives from the loading of the binary to its unloading, and acts as scripted in both. */
class SlaveLibrary {
  public:
    SlaveLibrary();
    ~SlaveLibrary();
    SlaveLibrary(const SlaveLibrary&) = delete;
    SlaveLibrary& operator=(const SlaveLibrary&) = delete;

    /** Appends a line to the file that the environment variable SCRIPTED_FMU_RECORD names. */
    static void record(const std::string& call);

    /**
     * The script of the environment variable SCRIPTED_FMU_SCRIPT.
     *
     * @throws std::invalid_argument when it is malformed.
     */
    static Script environmentScript();

    /** Also makes the room that bury() will need: freeing an instance must not fail. */
    void countInstance() {
        buried_.reserve(buried_.size() + static_cast<std::size_t>(liveInstances_) + 1);
        ++liveInstances_;
    }

    int liveInstances() const { return liveInstances_; }

    /** Keeps a freed instance until the binary is unloaded, so that a call with the dead handle is
     *  recorded instead of being undefined. @p functions are what the tool gave it. */
    void bury(std::unique_ptr<Slave> instance, const fmi2CallbackFunctions* functions);

    /** Does @p work over and over in a thread until the binary is unloaded. */
    void goOn(const std::function<void()>& work);

  private:
    void act(const char* call);

    int liveInstances_ = 0;
    std::vector<std::unique_ptr<Slave>> buried_;
    const fmi2CallbackFunctions* lastFunctions_ = nullptr;
    std::atomic<bool> unloading_ = false;
    std::vector<std::thread> threads_;
};

/** The only one in this binary. */
SlaveLibrary& slaveLibrary();
