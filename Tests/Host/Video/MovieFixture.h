#pragma once

#include "Host/Frames/WorldView.h"
#include "Host/Video/MovieReader.h"
#include "Host/Video/MovieWriter.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace Kerovane::Host {

/** Movies in a folder of the test's own, made and looked at by FFmpeg's own commands. */
class Movies : public testing::Test {
protected:
    std::string path(const std::string& name) const { return mFolder / name; }

    /// Runs a command in the folder, and returns what it prints.
    std::string outputOf(const std::string& command) const {
        const std::string line = "cd '" + path("") + "' && " + command;
        const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(line.c_str(), "r"), pclose);
        std::string output;
        std::array<char, 4096> part{};
        while (const std::size_t size = std::fread(part.data(), 1, part.size(), pipe.get())) {
            output.append(part.data(), size);
        }
        return output;
    }

    void ffmpeg(const std::string& arguments) const {
        const std::string line =
            "cd '" + path("") + "' && ffmpeg -nostdin -v error -y " + arguments;
        ASSERT_EQ(std::system(line.c_str()), 0) << line;
    }

    /// Returns what ffprobe prints for `entries` of a stream.
    std::string probe(const std::string& name, const std::string& stream,
                      const std::string& entries) const {
        return outputOf("ffprobe -v error -select_streams " + stream +
                        " -of compact=p=0:nk=1 -show_entries " + entries + " " + name);
    }

    /// Returns the checksum of the stream that `map` selects, as decoded with `options`.
    std::string sumOf(const std::string& name, const std::string& map,
                      const std::string& options = "") const {
        return outputOf("ffmpeg -nostdin -v error -i " + name + " -map " + map + " " + options +
                        " -f md5 -");
    }

    /// Returns the presentation times of a movie's frames, in seconds.
    std::vector<double> timesOf(const std::string& name) const {
        std::istringstream lines(probe(name, "v", "frame=best_effort_timestamp_time"));
        std::vector<double> times;
        for (std::string line; std::getline(lines, line);) {
            if (!line.empty()) {
                times.push_back(std::stod(line));
            }
        }
        return times;
    }

    /// Returns the least signal-to-noise ratio of any frame of two movies, in dB.
    double likeness(const std::string& one, const std::string& other,
                    const std::string& format) const {
        const std::string lines =
            outputOf("ffmpeg -nostdin -v error -i " + one + " -i " + other +
                     " -lavfi '[0]format=" + format + "[a];[1]format=" + format +
                     "[b];[a][b]psnr=f=-' -f null - | grep -o 'psnr_avg:[0-9.]*' | cut -d: -f2");
        std::istringstream numbers(lines);
        double least = lines.empty() ? 0 : 1000;
        for (double number = 0; numbers >> number;) {
            least = std::min(least, number);
        }
        return least;
    }

    /// Copies a movie through layers: all of it, or `count` frames from `first` on.
    void copy(const std::string& from, const std::string& to, const MovieSettings& settings = {},
              std::pair<int, int> cut = {0, 0}) {
        MovieReader reader(path(from));
        const auto [first, count] = cut;
        if (count > 0) {
            reader.seek(first);
        }
        MovieWriter writer(path(to), reader.form(), settings);
        writer.carryFrom(reader, count > 0 ? std::optional<std::int64_t>(count) : std::nullopt);
        World world(reader.form().depth(), reader.form().width, reader.form().height);
        std::int64_t end = 0;
        for (int done = 0; count == 0 || done < count; ++done) {
            std::optional<MovieFrame> frame = reader.read();
            if (!frame) {
                break;
            }
            reader.unpack(*frame, ViewOf(world));
            end = frame->time + frame->duration;
            writer.write(writer.pack(ViewOf(std::as_const(world))), frame->time, frame->duration,
                         std::move(frame->others));
        }
        writer.finish(reader.readOthers(end));
        mDamage = reader.damage();
        mEndedEarly = reader.endedEarly();
        mNotes = writer.notes();
    }

    TemporaryFolder mFolder;
    MovieDamage mDamage;
    std::string mEndedEarly;
    std::vector<std::string> mNotes;
};

} // namespace Kerovane::Host
