// The timeline: frames, and keys over time.

import {getJson} from "./Api.js";
import {byId, clamp, make, makeSvg, shortNumber, tell} from "./Dom.js";
import {store} from "./Store.js";

const margin = 14; // space left of the first frame, in pixels
const labels = 44;  // space right of the last frame, for the labels of values; in pixels

export class Timeline {
    #option = "";
    #isPlaying = false;
    #copied = null;
    #dragged = null; // {index, frame}: the key that is being dragged, and its new frame
    #curve = "";
    #curveQuery = 0;

    constructor(viewer) {
        this.viewer = viewer;
        this.svg = byId("curve");
        this.#listen();
        for (const name of ["state", "frame", "footage"]) {
            store.addEventListener(name, () => this.update());
        }
        store.addEventListener("parameter", (event) => this.choose(event.detail));
        new ResizeObserver(() => this.update()).observe(this.svg);
        this.update();
    }

    get first() {
        return store.frames[0];
    }

    get last() {
        return store.frames.at(-1);
    }

    #listen() {
        const on = (id, action) => byId(id).addEventListener("click", action);
        on("first-frame", () => store.setFrame(this.first));
        on("previous-frame", () => store.step(-1));
        on("play", () => this.togglePlaying());
        on("next-frame", () => store.step(1));
        on("last-frame", () => store.setFrame(this.last));
        byId("frame").addEventListener("change", () => {
            const wanted = Number(byId("frame").value);
            store.setFrame(store.frames.reduce(
                (best, frame) => Math.abs(frame - wanted) < Math.abs(best - wanted) ? frame : best));
            this.update();
        });
        byId("curve-parameter").addEventListener("change", (event) => this.choose(event.target.value));
        on("previous-key", () => this.#goToKey(-1));
        on("next-key", () => this.#goToKey(1));
        on("remove-keys", () => store.edit({do: "remove-keys", option: this.#option}));
        on("copy-key", () => this.copyKey());
        on("paste-key", () => this.pasteKey());
        byId("way").addEventListener("change", (event) => store.edit(
            {do: "put-key", option: this.#option, way: event.target.value}));
        this.svg.addEventListener("pointerdown", (event) => {
            if (event.target.closest(".key-mark")) {
                return;
            }
            this.svg.setPointerCapture(event.pointerId);
            const go = (next) => store.setFrame(this.#frameAt(next.clientX));
            go(event);
            this.svg.addEventListener("pointermove", go);
            this.svg.addEventListener("lostpointercapture",
                                      () => this.svg.removeEventListener("pointermove", go),
                                      {once: true});
        });
    }

    choose(option) {
        if (option !== this.#option && store.schema.some((p) => p.option === option && p.animatable)) {
            this.#option = option;
            this.update();
        }
    }

    // Positions.

    #x(frame) {
        const width = this.svg.clientWidth - margin - labels;
        return margin + (frame - this.first) / Math.max(1, this.last - this.first) * width;
    }

    #frameNumberAt(clientX) {
        const box = this.svg.getBoundingClientRect();
        const share = (clientX - box.left - margin) / (box.width - margin - labels);
        return Math.round(this.first + clamp(share, 0, 1) * (this.last - this.first));
    }

    /// Returns the first existing frame at or after the one under the pointer, or the last frame.
    #frameAt(clientX) {
        const wanted = this.#frameNumberAt(clientX);
        const {frames} = store;
        let low = 0;
        let high = frames.length - 1;
        while (low < high) {
            const middle = (low + high) >> 1;
            frames[middle] < wanted ? low = middle + 1 : high = middle;
        }
        return frames[low];
    }

    // Keys.

    get #keys() {
        return store.state.parameters[this.#option]?.keys ?? [];
    }

    #keyHere() {
        return this.#keys.findIndex(({frame}) => Math.abs(frame - store.frame) < 0.5);
    }

    #goToKey(direction) {
        const keys = this.#keys.map(({frame}) => Math.round(frame));
        const found = direction > 0 ? keys.find((frame) => frame > store.frame)
                                    : keys.findLast((frame) => frame < store.frame);
        if (found !== undefined) {
            store.setFrame(clamp(found, this.first, this.last));
        }
    }

    copyKey(index = this.#keyHere()) {
        const key = this.#keys[index];
        if (key) {
            this.#copied = {...key, option: this.#option};
            tell("Key copied; paste it at another frame.");
            this.update();
        }
    }

    pasteKey() {
        const key = this.#copied;
        if (key && key.option === this.#option) {
            const parameter = store.schema.find(({option}) => option === this.#option);
            const value = parameter.type === "checkbox" ? String(key.value !== 0) : String(key.value);
            store.edit({do: "put-key", option: this.#option, value, way: key.way});
        }
    }

    #markKeys(y) {
        return this.#keys.map((key, index) => {
            const place = this.#dragged?.index === index ? this.#dragged.frame : key.frame;
            const name = `Key at frame ${shortNumber(key.frame, 2)}: ${shortNumber(key.value, 3)}`;
            const mark = makeSvg("path", {
                d: "M0-5.5 5.5 0 0 5.5-5.5 0z", class: "key-mark", tabindex: 0, role: "button",
                transform: `translate(${this.#x(place)} ${y(key.value)})`,
                "aria-label": `${name}. Arrow keys move it, Delete removes it, C copies it`},
                makeSvg("title", {}, `${name}, ${key.way}`));
            mark.classList.toggle("here", Math.abs(key.frame - store.frame) < 0.5);
            mark.addEventListener("pointerdown", (event) => this.#dragKey(event, index));
            mark.addEventListener("keydown", (event) => this.#keyOnKey(event, index));
            return mark;
        });
    }

    /// Moves a key with the pointer. Listens on the whole curve, because the key's mark is created
    /// anew whenever it moves.
    #dragKey(event, index) {
        const key = this.#keys[index];
        const option = this.#option;
        event.stopPropagation();
        this.svg.setPointerCapture(event.pointerId);
        this.#dragged = {index, frame: key.frame};
        store.setFrame(clamp(Math.round(key.frame), this.first, this.last));
        const drag = (next) => {
            this.#dragged.frame = this.#frameNumberAt(next.clientX);
            this.#paint(this.svg.clientHeight);
        };
        this.svg.addEventListener("pointermove", drag);
        this.svg.addEventListener("lostpointercapture", async () => {
            this.svg.removeEventListener("pointermove", drag);
            const {frame} = this.#dragged;
            this.#dragged = null;
            if (frame !== key.frame) {
                await store.edit({do: "move-key", option, index, frame});
                store.setFrame(clamp(frame, this.first, this.last));
            }
        }, {once: true});
    }

    async #keyOnKey(event, index) {
        const key = this.#keys[index];
        const step = {ArrowLeft: -1, ArrowRight: 1}[event.key];
        if (step) {
            event.preventDefault();
            event.stopPropagation();
            const frame = Math.round(key.frame) + step;
            const option = this.#option;
            if (this.#keys.some((other) => other.frame === frame)) {
                return;
            }
            await store.edit({do: "move-key", option, index, frame,
                              gesture: store.gesture(`${option} key`)});
            store.setFrame(clamp(frame, this.first, this.last));
            this.#focusKey(frame);
        } else if (event.key === "Delete" || event.key === "Backspace") {
            event.preventDefault();
            store.edit({do: "remove-key", option: this.#option, index});
        } else if (event.key === "Enter") {
            store.setFrame(clamp(Math.round(key.frame), this.first, this.last));
        } else if (event.key === "c" && !event.ctrlKey) {
            event.stopPropagation();
            this.copyKey(index);
        }
    }

    #focusKey(frame) {
        const index = this.#keys.findIndex((key) => key.frame === frame);
        this.svg.querySelectorAll(".key-mark")[index]?.focus();
    }

    // Playback.

    togglePlaying() {
        this.#isPlaying ? this.stop() : this.play();
    }

    stop() {
        this.#isPlaying = false;
        this.#showPlaying();
        store.dispatchEvent(new Event("frame"));
    }

    get isPlaying() {
        return this.#isPlaying;
    }

    #showPlaying() {
        const button = byId("play");
        button.textContent = this.#isPlaying ? "❚❚" : "▶";
        button.setAttribute("aria-label", this.#isPlaying ? "Pause" : "Play");
    }

    /// Plays in a loop at the shot's frame rate. Skips and counts frames that are due while an
    /// earlier frame is still being loaded.
    play() {
        if (!store.isMoving) {
            return;
        }
        this.#isPlaying = true;
        this.#showPlaying();
        const {fps} = store.state.footage;
        const start = performance.now() - store.frames.indexOf(store.frame) / fps * 1000;
        let shown = Math.round((performance.now() - start) / 1000 * fps);
        let dropped = 0;
        byId("dropped").textContent = "0 dropped";
        const tick = () => {
            if (!this.#isPlaying) {
                return;
            }
            const due = Math.floor((performance.now() - start) / 1000 * fps);
            if (due > shown && !this.viewer.isBusy) {
                dropped += due - shown - 1;
                shown = due;
                byId("dropped").textContent = `${dropped} dropped`;
                store.setFrame(store.frames[due % store.frames.length]);
            }
            requestAnimationFrame(tick);
        };
        tick();
    }

    // Drawing.

    update() {
        byId("timeline").hidden = !store.isMoving;
        if (!store.isMoving) {
            return;
        }
        const animatable = store.schema.filter(({animatable}) => animatable);
        if (!this.#option) {
            const {parameters} = store.state;
            const shown = animatable.find(({option}) => parameters[option].animated);
            this.#option = (shown ?? animatable[0])?.option ?? "";
        }
        const {state} = store;
        byId("frame").value = store.frame;
        byId("frames").textContent =
            `${this.first} – ${this.last}   ${shortNumber(state.footage.fps, 3)} fps`;
        byId("curve-parameter").replaceChildren(...animatable.map(({option, name}) =>
            make("option", {value: option, selected: option === this.#option},
                 `${state.parameters[option].animated ? "◆ " : ""}${name}`)));
        this.#updateKeyTools();
        this.#draw();
    }

    #updateKeyTools() {
        const parameter = store.schema.find(({option}) => option === this.#option);
        const keys = this.#keys;
        const here = keys[this.#keyHere()];
        byId("previous-key").disabled = !keys.some(({frame}) => frame < store.frame);
        byId("next-key").disabled = !keys.some(({frame}) => frame > store.frame);
        byId("copy-key").disabled = !here;
        byId("paste-key").disabled = this.#copied?.option !== this.#option;
        byId("remove-keys").disabled = keys.length === 0;
        const way = byId("way");
        way.disabled = !here;
        way.replaceChildren(...(parameter?.interpolations ?? []).map((name) =>
            make("option", {value: name, selected: here?.way === name}, name)));
    }

    /// Loads the curve's values from the server if they changed, and draws them.
    async #draw() {
        const width = this.svg.clientWidth;
        const height = this.svg.clientHeight;
        const query = ++this.#curveQuery;
        const key = `${this.#option} ${store.state.revision} ${width} ${height}`;
        if (this.#keys.length > 0 && key !== this.#curve) {
            const count = clamp(Math.min(width, (this.last - this.first) * 4 + 1), 2, 2000);
            const values = await getJson("curve", {option: this.#option, first: this.first,
                                                   last: this.last, count}).catch(() => null);
            if (query !== this.#curveQuery || !values) {
                return;
            }
            this.#curve = key;
            this.values = values;
        }
        this.#paint(height);
    }

    #paint(height) {
        const ruler = this.#paintRuler(height);
        const position = makeSvg("g", {class: "position"},
            makeSvg("line", {x1: this.#x(store.frame), x2: this.#x(store.frame), y1: 0, y2: height}),
            makeSvg("path", {d: `M${this.#x(store.frame)} 8l-5-8h10z`}));
        const focused = [...this.svg.querySelectorAll(".key-mark")].indexOf(document.activeElement);
        if (this.#keys.length === 0) {
            const {name} = store.schema.find(({option}) => option === this.#option) ?? {name: ""};
            this.svg.replaceChildren(...ruler, makeSvg(
                "text", {x: this.svg.clientWidth / 2, y: height / 2 + 10, class: "advice"},
                `${name} has no keys: ◇ beside it sets one here`), position);
            return;
        }
        const known = [...this.values, ...this.#keys.map(({value}) => value)];
        const low = Math.min(...known);
        const high = Math.max(...known);
        const top = 30;
        const bottom = height - 10;
        const y = (value) => high > low ? bottom - (value - low) / (high - low) * (bottom - top)
                                        : (top + bottom) / 2;
        const step = (this.last - this.first) / (this.values.length - 1);
        const points = this.values.map((value, i) =>
            `${this.#x(this.first + i * step).toFixed(1)},${y(value).toFixed(1)}`);
        const bounds = high > low ? [[high, top], [low, bottom]] : [];
        this.svg.replaceChildren(...ruler,
            ...bounds.map(([value, place]) => makeSvg("text", {
                x: this.svg.clientWidth - 4, y: place + 3, class: "value"}, shortNumber(value, 2))),
            makeSvg("polyline", {points: points.join(" "), class: "line"}),
            position, ...this.#markKeys(y));
        if (focused >= 0) {
            this.svg.querySelectorAll(".key-mark")[focused]?.focus();
        }
    }

    #paintRuler(height) {
        const length = this.last - this.first;
        const most = Math.max(2, this.svg.clientWidth / 70);
        const steps = [1, 2, 5, 10, 20, 25, 50, 100, 200, 500, 1000, 2000, 5000, 10000, 50000, 100000];
        const step = steps.find((candidate) => length / candidate <= most) ?? length;
        const marks = [];
        for (let frame = Math.ceil(this.first / step) * step; frame <= this.last; frame += step) {
            const x = this.#x(frame);
            marks.push(makeSvg("line", {x1: x, x2: x, y1: 14, y2: height, class: "grid"}),
                       makeSvg("text", {x, y: 11, class: "number"}, String(frame)));
        }
        return marks;
    }
}
