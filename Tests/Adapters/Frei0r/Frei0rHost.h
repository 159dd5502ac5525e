#pragma once

#include "Adapters/Frei0r/Frei0rInterface.h"
#include "Tests/Support/TemporaryFolder.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <vector>

namespace Kerovane::TestSupport {

using Pixels = std::vector<std::uint32_t>;

/** A frei0r host: the functions of a module that is loaded and initialised, until it goes. */
class Frei0rHost {
public:
    explicit Frei0rHost(const std::filesystem::path& module = FREI0R_MODULE);
    ~Frei0rHost();
    Frei0rHost(const Frei0rHost&) = delete;
    Frei0rHost& operator=(const Frei0rHost&) = delete;

    f0r_plugin_info_t info() const;
    f0r_param_info_t param(int index) const;

    decltype(&f0r_init) init;
    decltype(&f0r_deinit) deinit;
    decltype(&f0r_get_plugin_info) getPluginInfo;
    decltype(&f0r_get_param_info) getParamInfo;
    decltype(&f0r_construct) construct;
    decltype(&f0r_destruct) destruct;
    decltype(&f0r_set_param_value) setParamValue;
    decltype(&f0r_get_param_value) getParamValue;
    decltype(&f0r_update) update;

private:
    void* mLibrary;
};

/** One instance of the filter. */
class Frei0rInstance {
public:
    Frei0rInstance(const Frei0rHost& host, unsigned width, unsigned height);
    ~Frei0rInstance();
    Frei0rInstance(const Frei0rInstance&) = delete;
    Frei0rInstance& operator=(const Frei0rInstance&) = delete;

    void set(int index, double position);
    double get(int index) const;

    void update(double time, const std::uint32_t* in, std::uint32_t* out);
    Pixels rendered(const Pixels& in);

private:
    const Frei0rHost& mHost;
    f0r_instance_t mInstance;
};

/** The adapter installed in a folder of the test's own, beside whatever stands for the effect. */
class Installation {
public:
    /// `effect` is copied to the effect's place; none is there where it is empty.
    explicit Installation(const std::filesystem::path& effect);

    std::filesystem::path folder() const { return mFolder / ""; }
    std::filesystem::path module() const { return mFolder / "lib/frei0r-1/tesselune.so"; }

private:
    TemporaryFolder mFolder;
};

/// A picture with no two neighbours alike, in colour and alpha.
Pixels MotleyPicture(std::size_t width, std::size_t height);

} // namespace Kerovane::TestSupport
