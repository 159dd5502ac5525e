#pragma once

#include "Host/Panel/Look.h"

#include <string>
#include <utility>
#include <vector>

namespace Kerovane::Host {

/** The current look with its undo and redo history. */
class History {
public:
    explicit History(Look look) : mLook(std::move(look)) {}

    const Look& look() const { return mLook; }

    bool canUndo() const { return !mPast.empty(); }
    bool canRedo() const { return !mUndone.empty(); }

    /// Sets the look. Consecutive changes with the same `gesture` are undone as one; a change with
    /// an empty gesture is undone alone.
    void change(Look look, const std::string& gesture) {
        if (look == mLook) {
            return;
        }
        if (gesture.empty() || gesture != mGesture) {
            mPast.push_back(std::move(mLook));
        }
        mLook = std::move(look);
        mUndone.clear();
        mGesture = gesture;
    }

    /// Take back the last change, or make it again. Do nothing if there is none.
    void undo() { step(mPast, mUndone); }
    void redo() { step(mUndone, mPast); }

private:
    void step(std::vector<Look>& from, std::vector<Look>& to) {
        if (!from.empty()) {
            to.push_back(std::exchange(mLook, std::move(from.back())));
            from.pop_back();
            mGesture.clear();
        }
    }

    Look mLook;
    std::vector<Look> mPast;
    std::vector<Look> mUndone;
    std::string mGesture; ///< gesture of the last change; empty after undo() or redo()
};

} // namespace Kerovane::Host
