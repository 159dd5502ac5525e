#include "Host/Panel/History.h"
#include "Host/Panel/Look.h"
#include "Host/Parameters/KeyframeText.h"
#include "Tests/Host/Parameters/SampleParameters.h"
#include "Tests/Support/ErrorText.h"

#include <gtest/gtest.h>

#include <functional>

namespace Kerovane::Host {
namespace {

/// Converts frames to seconds at 25 frames a second.
double Place(double frame, KeyUnit unit) {
    return unit == KeyUnit::Frames ? frame : frame / 25;
}

TEST(LookEditor, EditsKeysInTheirUnit) {
    const Parameter parameter = FloatSlider();
    const PlaceOfFrame placeOf = Place;
    struct Row {
        const char* start; ///< the setting before `change`; empty: the default
        std::function<void(LookEditor&)> change;
        const char* end;
    };
    const Row kRows[] = {
        {"", [](LookEditor& editor) { editor.setValue(5, "2"); }, "2"},
        {"0:1 10:3", [](LookEditor& editor) { editor.setValue(5, "9"); }, "0:1 5:9 10:3"},
        {"0:1:hold 10:3", [](LookEditor& editor) { editor.setValue(0, "9"); }, "0:9:hold 10:3"},
        {"0:1 10:3", [](LookEditor& editor) { editor.putKey(5, "", ""); }, "0:1 5:2 10:3"},
        {"0:1 10:3", [](LookEditor& editor) { editor.putKey(0, "", "smooth"); }, "0:1:smooth 10:3"},
        {"0:1 10:3 20:5", [](LookEditor& editor) { editor.moveKey(0, 15); }, "10:3 15:1 20:5"},
        {"0:1 10:3 20:5", [](LookEditor& editor) { editor.moveKey(0, 20); }, "10:3 20:1"},
        {"0s:1 2s:3", [](LookEditor& editor) { editor.putKey(25, "7", ""); }, "0s:1 1s:7 2s:3"},
        {"0:1 10:3 20:5", [](LookEditor& editor) { editor.removeKey(1); }, "0:1 20:5"},
        {"0:1 10:3", [](LookEditor& editor) { editor.removeKeys(5); }, "2"},
        {"3", [](LookEditor& editor) { editor.putKey(4, "", ""); }, "3"},
    };
    for (const Row& row : kRows) {
        Look look;
        LookEditor editor(look, parameter, placeOf);
        if (*row.start != '\0') {
            editor.setText(row.start);
        }
        row.change(editor);
        EXPECT_EQ(FormatKeyframes(parameter, look.settings.at(parameter.id())), row.end)
            << row.start;
    }
}

TEST(LookEditor, KeepsASingleKeyUntilItIsRemoved) {
    const Parameter parameter = FloatSlider();
    const PlaceOfFrame placeOf = Place;
    Look look;
    LookEditor editor(look, parameter, placeOf);
    editor.putKey(4, "2", "");
    EXPECT_TRUE(look.animated.contains(parameter.id()));
    editor.setValue(9, "5");
    EXPECT_EQ(look.settings.at(parameter.id()).keys().size(), 2U);
    editor.removeKey(0);
    editor.removeKey(0);
    EXPECT_FALSE(look.animated.contains(parameter.id()));
    EXPECT_NE(ErrorOf([&] { editor.removeKey(0); }), "");
    EXPECT_NE(ErrorOf([&] { editor.putKey(0, "11", ""); }), "");
    EXPECT_NE(ErrorOf([&] { editor.putKey(0, "1", "sideways"); }), "");
}

TEST(History, UndoesAGestureInOneStep) {
    const auto lookOf = [](double value) {
        return LookOf({{1, Keyframes(value)}}, Renderer::Software);
    };
    History history(lookOf(0));
    history.change(lookOf(1), "drag");
    history.change(lookOf(2), "drag");
    history.change(lookOf(2), "");
    history.change(lookOf(3), "");
    history.undo();
    EXPECT_EQ(history.look(), lookOf(2));
    history.undo();
    EXPECT_EQ(history.look(), lookOf(0));
    EXPECT_FALSE(history.canUndo());
    history.redo();
    history.change(lookOf(4), "drag");
    EXPECT_FALSE(history.canRedo());
    history.undo();
    EXPECT_EQ(history.look(), lookOf(2));
}

} // namespace
} // namespace Kerovane::Host
