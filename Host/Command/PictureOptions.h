#pragma once

#include "Host/Pictures/ColourConversion.h"
#include "Host/Pictures/PictureReader.h"

#include <CLI/App.hpp>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace Kerovane::Host {

/** The command-line options that select a picture's layers and convert its colours. */
class PictureOptions {
public:
    /// Adds the options for layers and for colour conversion.
    void addTo(CLI::App& command);

    /// Adds the option for overscan, the pixels outside the display window.
    void addOverscanTo(CLI::App& command);

    /// Applies the options to `setting`.
    void set(ReadSetting& setting) const;

    /// Returns the requested colour conversion, or nothing if none was requested. Throws Error if
    /// the conversion does not exist.
    std::optional<ColourConversion> conversion() const;

    /// Returns the given options as words for a command line.
    std::vector<std::string> words() const;

    /// Returns the name of an option that was given and applies to picture files only. Returns an
    /// empty text if there is none.
    std::string givenForPictures() const;

private:
    std::string mLayer;
    std::optional<int> mPart;
    std::string mOverscan;
    /// The colour spaces of input and output; both empty if not given.
    std::pair<std::string, std::string> mConvert;
};

} // namespace Kerovane::Host
