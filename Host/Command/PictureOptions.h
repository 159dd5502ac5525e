#pragma once

#include "Host/Pictures/ColourConversion.h"
#include "Host/Pictures/PictureReader.h"

#include <CLI/App.hpp>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace Kerovane::Host {

/** Options of the command line that say what of a picture is worked on, and in which colours. */
class PictureOptions {
public:
    /// Adds the options that choose a layer and convert colour.
    void addTo(CLI::App& command);

    /// Adds the one that says what becomes of overscan.
    void addOverscanTo(CLI::App& command);

    /// Sets what was given.
    void set(ReadSetting& setting) const;

    /// Nothing if none was asked for. Throws Error if there is no such conversion.
    std::optional<ColourConversion> conversion() const;

    /// What was given, as it is typed.
    std::vector<std::string> words() const;

    /// One that was given and is for files of pictures alone; empty if there is none.
    std::string givenForPictures() const;

private:
    std::string mLayer;
    std::optional<int> mPart;
    std::string mOverscan;
    std::pair<std::string, std::string> mConvert; ///< from and to; both empty if not given
};

} // namespace Kerovane::Host
