#pragma once

#include "Adapters/Frei0r/Frei0rInterface.h"
#include "Tests/Support/TemporaryFolder.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <vector>

namespace Kerovane::TestSupport {

using Pixels = std::vector<std::uint32_t>;

/** A frei0r host: loads and initialises a module, and unloads it in the destructor. */
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

/** The adapter installed in a temporary folder, beside a module that takes the effect's place. */
class Installation {
public:
    /// `effect` is copied to where the effect is expected; an empty path leaves none there.
    explicit Installation(const std::filesystem::path& effect);

    std::filesystem::path folder() const { return mFolder / ""; }
    std::filesystem::path module() const { return mFolder / "lib/frei0r-1/tesselune.so"; }

private:
    TemporaryFolder mFolder;
};

/// Returns a picture in which no two neighbouring pixels have the same colour and alpha.
Pixels MotleyPicture(std::size_t width, std::size_t height);

} // namespace Kerovane::TestSupport
