// The parameters' controls: one row each, built from the parameters' description by the server.

import {byId, clamp, make, makeSvg, shortNumber} from "./Dom.js";
import {store} from "./Store.js";

const unitSigns = {percent: "%", degrees: "°"};
const isSeed = (parameter) => /seed/i.test(parameter.name);
const isSwitch = (parameter) => parameter.type === "checkbox";
const isPopup = (parameter) => parameter.type === "popup";
const isAngle = (parameter) => parameter.type === "angle";
const takesWhole = (parameter) => parameter.type === "slider";

/// A parameter's row of controls. Calls `tryValue` with values that the user passes while dragging.
class Row {
    constructor(parameter, tryValue) {
        this.parameter = parameter;
        this.tryValue = tryValue;
        this.inputs = [];
        this.label = parameter.label || parameter.name;
        this.element = this.#make();
    }

    get option() {
        return this.parameter.option;
    }

    /// Returns the value's text as the command takes it.
    text(value) {
        if (isSwitch(this.parameter)) {
            return value ? "true" : "false";
        }
        const {min, max} = this.parameter.valid;
        return String(clamp(takesWhole(this.parameter) ? Math.round(value) : value, min, max));
    }

    attempt(value) {
        const text = this.text(value);
        this.show(Number.isNaN(Number(text)) ? value : Number(text));
        this.tryValue({[this.option]: text});
    }

    set(value) {
        return store.edit({do: "set", option: this.option, value: this.text(value),
                           gesture: store.gesture(this.option)});
    }

    #make() {
        const {parameter} = this;
        const id = `parameter-${this.option}`;
        const main = this.#makeMain(id);
        this.keyButton = make("button", {
            type: "button", class: "key icon", onclick: () => this.#toggleKey()});
        this.resetButton = make("button", {
            type: "button", class: "reset icon", title: "Back to its default",
            "aria-label": `Reset ${this.label}`,
            onclick: () => store.edit({do: "reset", option: this.option})}, "↺");
        const tools = [];
        if (isSeed(parameter)) {
            tools.push(make("button", {
                type: "button", class: "dice icon", title: "Another pattern",
                "aria-label": `Throw dice for ${this.label}`,
                onclick: () => this.set(parameter.valid.min + Math.floor(
                    Math.random() * (parameter.valid.max - parameter.valid.min + 1)))}, "⚄"));
        }
        const head = make("div", {class: "head"},
            make("label", {for: id, id: `${id}-label`}, this.label), ...tools, ...main.head,
            this.keyButton, this.resetButton);
        const row = make("div", {class: "row", role: "group", "data-option": this.option,
                                 "aria-labelledby": `${id}-label`}, head, ...main.below);
        const hint = () => {
            byId("hint").textContent = parameter.meaning ? `${parameter.meaning}.` : this.label;
        };
        row.addEventListener("pointerenter", hint);
        row.addEventListener("focusin", () => {
            hint();
            store.dispatchEvent(new CustomEvent("parameter", {detail: this.option}));
        });
        return row;
    }

    #makeMain(id) {
        if (isSwitch(this.parameter)) {
            return {head: [this.#makeSwitch(id)], below: []};
        }
        if (isPopup(this.parameter)) {
            return {head: [this.#makePopup(id)], below: []};
        }
        const number = this.#makeNumber(id);
        return isAngle(this.parameter) ? {head: [this.#makeDial(), ...number], below: []}
                                       : {head: number, below: [this.#makeSlider()]};
    }

    #makeSwitch(id) {
        const input = make("input", {type: "checkbox", role: "switch", id, class: "switch",
                                     title: this.parameter.meaning,
                                     onchange: () => this.set(input.checked)});
        this.inputs.push((value) => { input.checked = value !== 0; });
        return input;
    }

    #makePopup(id) {
        const input = make("select", {id, title: this.parameter.meaning,
                                      onchange: () => this.set(Number(input.value))},
            ...this.parameter.choices.map(({value, name}) => make("option", {value}, name)));
        this.inputs.push((value) => { input.value = value; });
        return input;
    }

    /// Makes an input for the whole valid range.
    #makeNumber(id) {
        const {parameter} = this;
        const {min, max} = parameter.valid;
        const decimals = takesWhole(parameter) ? 0 : Math.max(parameter.precision, 1);
        const input = make("input", {
            type: "number", id, min, max, step: takesWhole(parameter) ? 1 : "any",
            title: `${min} to ${max}${unitSigns[parameter.unit] ?? ""}: ${parameter.meaning}`,
            onchange: () => input.value === "" ? this.show(this.value) : this.set(Number(input.value)),
        });
        input.addEventListener("keydown", (event) => this.#stepByKey(event, input, decimals));
        this.inputs.push((value) => { input.value = shortNumber(value, Math.max(decimals, 2)); });
        const sign = unitSigns[parameter.unit] ?? (parameter.unit === "" && /pixels/.test(
            parameter.meaning) ? "px" : "");
        return [input, make("span", {class: "unit", "aria-hidden": "true"}, sign)];
    }

    /// Changes the value by one unit with the arrow keys, or by ten with Shift. The unit is 1 for
    /// wide ranges and the last decimal shown for others.
    #stepByKey(event, input, decimals) {
        const direction = {ArrowUp: 1, ArrowDown: -1}[event.key];
        if (direction) {
            event.preventDefault();
            const unit = (this.parameter.slider.max - this.parameter.slider.min) > 50
                ? 1 : 10 ** -decimals;
            this.set(Number(input.value) + direction * unit * (event.shiftKey ? 10 : 1));
        }
    }

    /// Makes a slider for the range that is useful in most cases.
    #makeSlider() {
        const {min, max} = this.parameter.slider;
        const step = takesWhole(this.parameter) ? 1 : max - min > 50 ? 0.1 : 0.01;
        const input = make("input", {
            type: "range", min, max, step, "aria-label": this.label, title: this.parameter.meaning,
            oninput: () => this.attempt(Number(input.value)),
            onchange: () => this.set(Number(input.value)),
        });
        this.inputs.push((value) => {
            input.value = value;
            const share = clamp((value - min) / (max - min), 0, 1);
            input.style.setProperty("--share", `${share * 100}%`);
        });
        return input;
    }

    #makeDial() {
        const hand = makeSvg("line", {x1: 12, y1: 12, x2: 22, y2: 12, class: "hand"});
        const dial = makeSvg("svg", {viewBox: "0 0 24 24", class: "dial", role: "slider",
                                     tabindex: 0, "aria-label": this.label,
                                     "aria-valuemin": this.parameter.valid.min,
                                     "aria-valuemax": this.parameter.valid.max},
            makeSvg("circle", {cx: 12, cy: 12, r: 10.5}), hand);
        // Returns the angle under the pointer, with the same number of full turns as the current
        // value.
        const angleAt = (event) => {
            const box = dial.getBoundingClientRect();
            const angle = Math.atan2(event.clientY - box.top - box.height / 2,
                                     event.clientX - box.left - box.width / 2) * 180 / Math.PI;
            const nearest = angle + Math.round((this.value - angle) / 360) * 360;
            const step = event.shiftKey ? 15 : 1;
            return Math.round(nearest / step) * step;
        };
        dial.addEventListener("pointerdown", (event) => {
            dial.setPointerCapture(event.pointerId);
            dial.focus();
            const turn = (next) => this.attempt(angleAt(next));
            turn(event);
            dial.addEventListener("pointermove", turn);
            dial.addEventListener("lostpointercapture", () => {
                dial.removeEventListener("pointermove", turn);
                this.set(this.value);
            }, {once: true});
        });
        dial.addEventListener("keydown", (event) => {
            const step = {ArrowRight: 1, ArrowUp: 1, ArrowLeft: -1, ArrowDown: -1}[event.key];
            if (step) {
                event.preventDefault();
                this.set(Math.round(this.value + step * (event.shiftKey ? 15 : 1)));
            }
        });
        this.inputs.push((value) => {
            hand.setAttribute("transform", `rotate(${value} 12 12)`);
            dial.setAttribute("aria-valuenow", value);
            dial.setAttribute("aria-valuetext", `${shortNumber(value, 2)} degrees`);
        });
        return dial;
    }

    show(value) {
        this.value = value;
        this.inputs.forEach((input) => input(value));
    }

    /// Returns the index of the key at the current frame, or -1.
    keyIndex() {
        const keys = store.state.parameters[this.option].keys ?? [];
        return keys.findIndex(({frame}) => Math.abs(frame - store.frame) < 0.5);
    }

    #toggleKey() {
        const index = this.keyIndex();
        store.edit(index < 0 ? {do: "put-key", option: this.option}
                             : {do: "remove-key", option: this.option, index});
    }

    update() {
        const state = store.state.parameters[this.option];
        this.show(state.animated ? store.values[this.option] ?? state.value : state.value);
        const hasKey = state.animated && this.keyIndex() >= 0;
        this.element.classList.toggle("animated", state.animated);
        this.element.classList.toggle("changed", !state.isDefault);
        this.resetButton.disabled = state.isDefault && !state.animated;
        this.keyButton.hidden = !store.isMoving || !this.parameter.animatable;
        this.keyButton.classList.toggle("here", hasKey);
        this.keyButton.textContent = hasKey ? "◆" : "◇";
        const action = hasKey ? "Remove the key here" : "Set a key here";
        this.keyButton.title = action;
        this.keyButton.setAttribute("aria-label", `${this.label}: ${action.toLowerCase()}`);
        this.keyButton.setAttribute("aria-pressed", hasKey);
    }
}

export function makeControls(tryValue) {
    const rows = store.schema.map((parameter) => new Row(parameter, tryValue));
    byId("parameters").replaceChildren(...rows.map(({element}) => element));
    const update = () => rows.forEach((row) => row.update());
    store.addEventListener("state", update);
    store.addEventListener("values", update);
    store.addEventListener("frame", update);
    byId("reset-all").addEventListener("click", () => store.edit({do: "reset-all"}));
    update();
}
