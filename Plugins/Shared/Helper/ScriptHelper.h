#pragma once

#include "SPBasic.h"

#include <string>

namespace Kerovane::Tesselune {

/** Runs pieces of the host's scripting language. */
class ScriptHelper {
public:
    ScriptHelper() = delete;

    /**
     * Runs `script` and returns its result as text. Returns an empty text if the script fails or
     * the host gives no result. Throws the int kSuiteRefused if the host lacks a required suite.
     */
    static std::string RunSriptAndGetStringResult(SPBasicSuite* basic, const char* script);

    /// Returns `text` without leading and trailing white space.
    static std::string TrimStringWhiteSpaces(const std::string& text);
};

} // namespace Kerovane::Tesselune
