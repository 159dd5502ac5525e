// File name patterns of sequences: a frame's file is found once it exists.
#include "Fuzz/Oracle.h"
#include "Fuzz/TextInput.h"
#include "Host/Shots/SequencePattern.h"
#include "Tests/Support/TemporaryFolder.h"

#include <cstdint>
#include <filesystem>
#include <fstream>

namespace Kerovane::Fuzz {

namespace {

using Host::SequencePattern;

/// Returns whether `text` is a file name without folders.
bool IsFileName(std::string_view text) {
    constexpr std::string_view kSeparators("/\0", 2);
    return text.find_first_of(kSeparators) == std::string_view::npos;
}

void CheckFindsItsFile(const SequencePattern& pattern, const std::filesystem::path& folder,
                       A_long frame) {
    const std::filesystem::path file = pattern.pathOf(frame);
    Expect(file.parent_path() == folder, "a frame's file is in the pattern's folder");
    if (!std::ofstream(file)) {
        return; // the name is too long
    }
    Expect(pattern.framesOnDisk() == Host::FrameList{frame}, "a frame's file is found");
    std::filesystem::remove(file);
}

} // namespace

} // namespace Kerovane::Fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace Kerovane::Fuzz;
    const std::string_view text = TextOf(data, size);
    // Only parses the text, without opening files: the text may name files outside the folder.
    ReadOrError([text] { return Kerovane::Host::SequencePattern::parse(text); });
    if (!IsFileName(text)) {
        return 0;
    }
    static const TemporaryFolder kFolder;
    const std::filesystem::path folder = (kFolder / "").parent_path();
    const auto pattern =
        ReadOrError([&] { return Kerovane::Host::SequencePattern::parse(folder / text); });
    if (pattern && *pattern) {
        for (const A_long frame : {-2147483647 - 1, -1, 0, 7, 1001, 12345678}) {
            CheckFindsItsFile(**pattern, folder, frame);
        }
    }
    return 0;
}
