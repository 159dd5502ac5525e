#pragma once

#include "Host/Panel/Look.h"

#include <string>
#include <utility>
#include <vector>

namespace Kerovane::Host {

/** A look, all that it was before, and what was undone. */
class History {
public:
    explicit History(Look look) : mLook(std::move(look)) {}

    const Look& look() const { return mLook; }

    bool canUndo() const { return !mPast.empty(); }
    bool canRedo() const { return !mUndone.empty(); }

    /// Changes with the same `gesture`, one after the other, count as one; an empty one is a change
    /// of its own.
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

    /// Both do nothing if there is nothing to go to.
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
    std::string mGesture; ///< of the last change
};

} // namespace Kerovane::Host
