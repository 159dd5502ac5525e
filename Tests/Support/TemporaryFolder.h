#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

/** A temporary folder, deleted in the destructor. */
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string name = std::filesystem::temp_directory_path() / "tesselune-test-XXXXXX";
        mPath = mkdtemp(name.data());
    }
    ~TemporaryFolder() { std::filesystem::remove_all(mPath); }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::filesystem::path operator/(const std::filesystem::path& name) const {
        return mPath / name;
    }

    std::string contentOf(const std::string& name) const {
        std::ifstream file(mPath / name);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    std::vector<std::string> files() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(mPath)) {
            names.push_back(entry.path().filename());
        }
        return names;
    }

private:
    std::filesystem::path mPath;
};
