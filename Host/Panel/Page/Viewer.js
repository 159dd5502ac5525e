// The viewer: zoom and position of the picture, comparison, and what lies under the pointer.

import {getJson} from "./Api.js";
import {byId, clamp, shortNumber} from "./Dom.js";
import {footageKey, makeLayers} from "./Pictures.js";
import {store} from "./Store.js";

const grounds = {checker: null, black: "#000", white: "#fff"};
const leastScale = 1 / 64;
const mostScale = 64;

export class Viewer extends EventTarget {
    #canvas = byId("canvas");
    #context = this.#canvas.getContext("2d");
    #layers = makeLayers((layer) => this.#layerChanged(layer));
    #isFitted = true;
    #scale = 1;           // screen pixels per picture pixel
    #offset = {x: 0, y: 0};
    #compare = "off";     // how to compare: "off", "split", "other" or "sides"
    #split = 0.5;
    #ground = "checker";
    #isBeforeHeld = false;
    #cell = null;
    #pointer = null;
    #cellQuery = {isBusy: false, next: null};
    #tried = {};
    #isMoving = false;

    constructor() {
        super();
        new ResizeObserver(() => this.#resize()).observe(byId("stage"));
        this.#listen();
        store.addEventListener("footage", () => {
            Object.values(this.#layers).forEach((layer) => layer.forget());
            this.#isFitted = true;
            this.#resize();
        });
    }

    // Loading.

    /// Requests the final picture, and shows it when it arrives.
    rest() {
        this.#tried = {};
        this.#isMoving = false;
        this.#ask();
    }

    /// Requests a quick preview, and shows it when it arrives. `tried` has values that the user
    /// tries but has not set.
    move(tried = {}) {
        this.#tried = Object.fromEntries(
            Object.entries(tried).map(([option, value]) => [`set.${option}`, value]));
        this.#isMoving = true;
        this.#setCell(null);
        this.#ask();
    }

    get isBusy() {
        return this.#layers.effect.isBusy;
    }

    #ask() {
        const {frame} = store;
        const {revision} = store.state;
        const layers = this.#layers;
        const wanted = [[layers.effect, revision, this.#tried]];
        if (this.#compare === "split" || this.#isBeforeHeld) {
            wanted.push([layers.source, footageKey(), {}]);
        }
        if (this.#compare === "other" || this.#compare === "sides") {
            wanted.push([layers.other, revision, {}]);
        }
        const view = {...this.#visible(), ground: this.#ground};
        for (const [layer, key, tried] of wanted) {
            if (!this.#isMoving) {
                layer.rest(frame, key, view);
            } else if (layer === layers.effect || layer.shown?.frame !== frame) {
                layer.preview(frame, view, tried);
            }
        }
    }

    #layerChanged(layer) {
        this.#paint();
        if (layer === this.#layers.effect) {
            const event = new Event("shown");
            event.picture = layer.shown;
            this.dispatchEvent(event);
        }
    }

    // Geometry.

    get #size() {
        return store.state.footage;
    }

    /// The area for one picture, in screen pixels.
    get #stage() {
        const {width, height} = this.#canvas;
        return {width: this.#compare === "sides" ? Math.floor(width / 2) - 1 : width, height};
    }

    /// Returns the visible part of the picture, and its size on the screen.
    #visible() {
        const {width, height} = this.#size;
        const stage = this.#stage;
        const left = clamp(Math.floor(-this.#offset.x / this.#scale), 0, width - 1);
        const top = clamp(Math.floor(-this.#offset.y / this.#scale), 0, height - 1);
        const right = clamp(Math.ceil((stage.width - this.#offset.x) / this.#scale), left + 1, width);
        const bottom =
            clamp(Math.ceil((stage.height - this.#offset.y) / this.#scale), top + 1, height);
        const shown = (size) => clamp(Math.round(size * this.#scale), 1, size);
        return {x: left, y: top, width: right - left, height: bottom - top,
                shownWidth: shown(right - left), shownHeight: shown(bottom - top)};
    }

    #resize() {
        const {clientWidth, clientHeight} = byId("stage");
        const ratio = devicePixelRatio;
        this.#canvas.width = Math.max(1, Math.round(clientWidth * ratio));
        this.#canvas.height = Math.max(1, Math.round(clientHeight * ratio));
        if (store.state) {
            this.#isFitted ? this.fit() : this.#paint();
        }
    }

    fit() {
        const {width, height} = this.#size;
        const stage = this.#stage;
        const margin = 16 * devicePixelRatio;
        this.#isFitted = true;
        this.#scale = clamp(Math.min((stage.width - margin) / width,
                                     (stage.height - margin) / height), leastScale, 1);
        this.#center();
    }

    actualSize() {
        this.#isFitted = false;
        this.#scale = 1;
        this.#center();
    }

    #center() {
        const {width, height} = this.#size;
        this.#offset = {x: Math.round((this.#stage.width - width * this.#scale) / 2),
                        y: Math.round((this.#stage.height - height * this.#scale) / 2)};
        this.#viewChanged();
    }

    /// Zooms around a point of the canvas. The default is the centre of the area for one picture.
    zoom(factor, point = {x: this.#stage.width / 2, y: this.#stage.height / 2}) {
        const scale = clamp(this.#scale * factor, leastScale, mostScale);
        const share = scale / this.#scale;
        this.#offset = {x: point.x - (point.x - this.#offset.x) * share,
                        y: point.y - (point.y - this.#offset.y) * share};
        this.#scale = scale;
        this.#isFitted = false;
        this.#viewChanged();
    }

    pan(x, y) {
        this.#offset.x += x;
        this.#offset.y += y;
        this.#isFitted = false;
        this.#viewChanged();
    }

    #viewChanged() {
        byId("zoom").textContent = `${shortNumber(this.#scale * 100, this.#scale < 0.1 ? 1 : 0)} %`;
        byId("fit").setAttribute("aria-pressed", this.#isFitted);
        byId("actual-size").setAttribute("aria-pressed", !this.#isFitted && this.#scale === 1);
        this.#paint();
    }

    // Background and comparison.

    setGround(ground) {
        this.#ground = ground;
        this.#paint();
        if (!this.#layers.effect.shown?.isStill) {
            this.rest();
        }
    }

    get compare() {
        return this.#compare;
    }

    setCompare(mode) {
        this.#compare = mode;
        byId("split").hidden = mode !== "split" && mode !== "other";
        byId("stage").dataset.compare = mode;
        this.#placeSplit();
        this.#isFitted ? this.fit() : this.#paint();
        this.rest();
    }

    holdBefore(isHeld) {
        if (isHeld !== this.#isBeforeHeld) {
            this.#isBeforeHeld = isHeld;
            byId("before").setAttribute("aria-pressed", isHeld);
            this.#ask();
            this.#paint();
        }
    }

    setSplit(share) {
        this.#split = clamp(share, 0, 1);
        this.#placeSplit();
        this.#paint();
    }

    #placeSplit() {
        const handle = byId("split");
        handle.style.left = `${this.#split * 100}%`;
        handle.setAttribute("aria-valuenow", Math.round(this.#split * 100));
    }

    // Painting.

    #paint() {
        const context = this.#context;
        const {width, height} = this.#canvas;
        context.clearRect(0, 0, width, height);
        const {effect, source, other} = this.#layers;
        if (this.#compare === "sides" && !this.#isBeforeHeld) {
            const half = this.#stage.width;
            this.#paintLayer(effect, 0, 0, half);
            this.#paintLayer(other, half + 2, half + 2, width);
        } else if (this.#isBeforeHeld) {
            this.#paintLayer(source, 0, 0, width);
        } else if (this.#compare === "off") {
            this.#paintLayer(effect, 0, 0, width);
        } else {
            const place = Math.round(this.#split * width);
            this.#paintLayer(this.#compare === "split" ? source : effect, 0, 0, place);
            this.#paintLayer(this.#compare === "split" ? effect : other, 0, place, width);
        }
        this.#paintCell();
    }

    /// Paints a layer, moved to the right by `shift` and clipped to `left` and `right`.
    #paintLayer(layer, shift, left, right) {
        const picture = layer.shown;
        if (!picture || right <= left) {
            return;
        }
        const context = this.#context;
        const scale = this.#scale;
        const {view} = picture;
        const x = this.#offset.x + shift + view.x * scale;
        const y = this.#offset.y + view.y * scale;
        const width = view.width * scale;
        const height = view.height * scale;
        context.save();
        context.beginPath();
        context.rect(left, 0, right - left, this.#canvas.height);
        context.clip();
        if (picture.isStill) {
            this.#paintGround(x, y, width, height);
        }
        context.imageSmoothingEnabled = scale < 1;
        context.imageSmoothingQuality = "high";
        context.drawImage(picture.bitmap, x, y, width, height);
        context.restore();
    }

    #paintGround(x, y, width, height) {
        const context = this.#context;
        context.save();
        context.translate(x, y);
        context.fillStyle = grounds[this.#ground] ?? this.#checker();
        context.fillRect(0, 0, width, height);
        context.restore();
    }

    #checkerPattern = null;

    #checker() {
        if (!this.#checkerPattern) {
            const field = 8;
            const tile = new OffscreenCanvas(2 * field, 2 * field);
            const context = tile.getContext("2d");
            context.fillStyle = "#666";
            context.fillRect(0, 0, 2 * field, 2 * field);
            context.fillStyle = "#999";
            context.fillRect(field, 0, field, field);
            context.fillRect(0, field, field, field);
            this.#checkerPattern = this.#context.createPattern(tile, "repeat");
        }
        return this.#checkerPattern;
    }

    #paintCell() {
        if (!this.#cell?.runs || this.#isBeforeHeld) {
            return;
        }
        const context = this.#context;
        context.save();
        context.translate(this.#offset.x, this.#offset.y);
        context.scale(this.#scale, this.#scale);
        context.beginPath();
        outline(context, this.#cell.runs);
        for (const [color, width] of [["#000", 3], ["#fff", 1.25]]) {
            context.strokeStyle = color;
            context.lineWidth = width * devicePixelRatio / this.#scale;
            context.stroke();
        }
        context.restore();
    }

    // Pointer.

    #listen() {
        const stage = byId("stage");
        const point = (event) => {
            const box = this.#canvas.getBoundingClientRect();
            return {x: (event.clientX - box.left) * devicePixelRatio,
                    y: (event.clientY - box.top) * devicePixelRatio};
        };
        stage.addEventListener("wheel", (event) => {
            event.preventDefault();
            this.zoom(Math.exp(-event.deltaY * (event.deltaMode ? 0.05 : 0.0015)), point(event));
        }, {passive: false});
        stage.addEventListener("dblclick", () => this.#isFitted ? this.actualSize() : this.fit());
        stage.addEventListener("pointerdown", (event) => {
            if (event.button > 1) {
                return;
            }
            const isSplit = event.target.closest("#split");
            let last = point(event);
            stage.setPointerCapture(event.pointerId);
            const drag = (next) => {
                const now = point(next);
                isSplit ? this.setSplit(now.x / this.#canvas.width)
                        : this.pan(now.x - last.x, now.y - last.y);
                last = now;
            };
            stage.addEventListener("pointermove", drag);
            stage.addEventListener("lostpointercapture",
                                   () => stage.removeEventListener("pointermove", drag),
                                   {once: true});
        });
        stage.addEventListener("pointermove", (event) => this.#look(point(event)));
        stage.addEventListener("pointerleave", () => this.#look(null));
        byId("split").addEventListener("keydown", (event) => {
            const step = {ArrowLeft: -0.02, ArrowRight: 0.02}[event.key];
            if (step) {
                event.preventDefault();
                event.stopPropagation();
                this.setSplit(this.#split + step);
            }
        });
    }

    /// Shows information about the pixel at a point of the canvas, or none if there is no pixel.
    #look(point) {
        const {width, height} = store.state?.footage ?? {width: 0, height: 0};
        const x = point ? Math.floor((point.x - this.#offset.x) / this.#scale) : -1;
        const y = point ? Math.floor((point.y - this.#offset.y) / this.#scale) : -1;
        if (x < 0 || y < 0 || x >= width || y >= height || this.#isMoving) {
            this.#cellQuery.next = null;
            this.#setCell(null);
            return;
        }
        this.#queryCell({x, y});
    }

    /// Requests the cell at a place. If more places come up during the request, requests only the
    /// last of them next.
    async #queryCell(place) {
        const query = this.#cellQuery;
        query.next = place;
        if (query.isBusy) {
            return;
        }
        query.isBusy = true;
        while (query.next) {
            const {x, y} = query.next;
            query.next = null;
            try {
                const cell = await getJson("cell", {frame: store.frame, x, y});
                if (!this.#isMoving) {
                    this.#setCell({...cell, x, y});
                }
            } catch {
                this.#setCell(null);
            }
        }
        query.isBusy = false;
    }

    #setCell(cell) {
        if (!cell && !this.#cell) {
            return;
        }
        this.#cell = cell;
        const swatch = byId("swatch");
        const text = byId("cell");
        if (cell) {
            const [red, green, blue, alpha] = cell.color;
            const hex = [red, green, blue].map((c) => c.toString(16).padStart(2, "0")).join("");
            swatch.style.background = `rgb(${red} ${green} ${blue} / ${alpha / 255})`;
            text.textContent =
                `${cell.x}, ${cell.y}   #${hex}` + (alpha < 255 ? `  alpha ${alpha}` : "");
        } else {
            swatch.style.background = "";
            text.textContent = "";
        }
        this.#paint();
    }
}

/// Traces the outline of an area that is given as runs of pixels.
function outline(context, runs) {
    const rows = [...runs].sort((one, other) => one[0] - other[0]);
    const corner = rows[0];
    context.moveTo(corner[1], corner[0]);
    for (const [y, , end] of rows) {
        context.lineTo(end, y);
        context.lineTo(end, y + 1);
    }
    for (const [y, begin] of rows.reverse()) {
        context.lineTo(begin, y + 1);
        context.lineTo(begin, y);
    }
    context.closePath();
}
