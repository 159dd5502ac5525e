#pragma once

#include "SPBasic.h"

#include <string>

namespace Kerovane::Tesselune {

/** Runs pieces of the host's scripting language. */
class ScriptHelper {
public:
    ScriptHelper() = delete;

    /**
     * The text that `script` results in; empty also if the script fails or the host gives none.
     * Throws the int kSuiteRefused if the host has no suite for it.
     */
    static std::string RunSriptAndGetStringResult(SPBasicSuite* basic, const char* script);

    /// `text` without the white space at its ends: blanks, tabs, line ends, form feeds.
    static std::string TrimStringWhiteSpaces(const std::string& text);
};

} // namespace Kerovane::Tesselune
