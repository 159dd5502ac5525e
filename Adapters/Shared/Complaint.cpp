#include "Adapters/Shared/Complaint.h"

#include <iostream>
#include <mutex>
#include <set>

namespace Kerovane::Adapters {

void Complain(const std::string& text) {
    static std::mutex mutex;
    static std::set<std::string> complaints;
    const std::lock_guard lock(mutex);
    if (complaints.insert(text).second) {
        std::cerr << "tesselune: " + text + "\n";
    }
}

} // namespace Kerovane::Adapters
