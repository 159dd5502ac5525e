// The page: connects its parts and handles the keyboard.

import {postFile} from "./Api.js";
import {makeCompare} from "./Compare.js";
import {makeControls} from "./Controls.js";
import {byId, make, shortNumber, tell} from "./Dom.js";
import {makeOutput} from "./Output.js";
import {loadPreset, makePresets, updatePresets} from "./Presets.js";
import {store} from "./Store.js";
import {Timeline} from "./Timeline.js";
import {Viewer} from "./Viewer.js";

let viewer = null;
let timeline = null;

function updateBar() {
    const {footage, canUndo, canRedo, renderer, renderers} = store.state;
    byId("name").textContent = byId("name").title = footage.name;
    byId("size").textContent = `${footage.width} × ${footage.height}` + (footage.deep ? ", more than 8 bits" : "");
    byId("undo").disabled = !canUndo;
    byId("redo").disabled = !canRedo;
    byId("back").hidden = !footage.dropped;
    byId("renderer").replaceChildren(...renderers.map((name) =>
        make("option", {value: name, selected: name === renderer}, name)));
    document.title = `${footage.name} – Tesselune`;
}

function showPicture({picture}) {
    byId("time").textContent = `${shortNumber(picture.milliseconds, 1)} ms`;
    byId("stage").dataset.rests = picture.isStill;
    byId("stage").dataset.frame = picture.frame;
    document.body.dataset.revision = store.state.revision;
    byId("stage").dataset.shows = Number(byId("stage").dataset.shows ?? 0) + 1;
}

/// The timer that ends once the frame has stopped changing. Then the final picture, the values, the
/// lines and the preset thumbnails are updated.
let settling = 0;

function showState() {
    updateBar();
    viewer.rest();
    settle();
}

function showFrame() {
    viewer.move();
    clearTimeout(settling);
    if (timeline.isPlaying) {
        return;
    }
    settling = setTimeout(() => {
        viewer.rest();
        settle();
    }, 120);
    store.loadFrame().catch(() => {});
}

function settle() {
    store.loadFrame().catch((error) => tell(error.message, true));
    updatePresets();
}

async function drop(file) {
    if (file.name.endsWith(".json")) {
        loadPreset(file);
        return;
    }
    try {
        store.take(await postFile("drop", {name: file.name}, file));
        tell(`${file.name} is here for a try; it stays in memory.`);
    } catch (error) {
        tell(error.message, true);
    }
}

function listenToDrops() {
    let depth = 0;
    const show = (isOver) => document.body.classList.toggle("dropping", isOver);
    addEventListener("dragenter", () => show(++depth > 0));
    addEventListener("dragleave", () => show(--depth > 0));
    addEventListener("dragover", (event) => event.preventDefault());
    addEventListener("drop", (event) => {
        event.preventDefault();
        depth = 0;
        show(false);
        const [file] = event.dataTransfer.files;
        if (file) {
            drop(file);
        }
    });
    byId("open").addEventListener("click", () => byId("picture-file").click());
    byId("picture-file").addEventListener("change", (event) => {
        const [file] = event.target.files;
        event.target.value = "";
        if (file) {
            drop(file);
        }
    });
    byId("back").addEventListener("click",
                                  async () => store.take(await postFile("drop", {name: ""}, "")));
}

// Keyboard.

const cycle = (select) => {
    select.selectedIndex = (select.selectedIndex + 1) % select.options.length;
    select.dispatchEvent(new Event("change"));
};

const keys = {
    " ": () => timeline.togglePlaying(),
    ArrowLeft: () => store.step(-1),
    ArrowRight: () => store.step(1),
    Home: () => store.setFrame(store.frames[0]),
    End: () => store.setFrame(store.frames.at(-1)),
    f: () => viewer.fit(),
    1: () => viewer.actualSize(),
    "+": () => viewer.zoom(1.25),
    "=": () => viewer.zoom(1.25),
    "-": () => viewer.zoom(0.8),
    b: () => viewer.holdBefore(true),
    s: () => {
        byId("compare").value = viewer.compare === "split" ? "off" : "split";
        viewer.setCompare(byId("compare").value);
    },
    x: () => byId("swap").click(),
    g: () => cycle(byId("ground")),
    o: () => byId("open-output").click(),
    "?": () => byId("help").showModal(),
};

const panKeys = {ArrowLeft: [1, 0], ArrowRight: [-1, 0], ArrowUp: [0, 1], ArrowDown: [0, -1]};

/// Returns whether the focused element handles the key itself.
function takesKey(element, key) {
    if (element.closest("dialog")) {
        return true;
    }
    const tag = element.tagName;
    const isChosen = key === " " || key.startsWith("Arrow") || key === "Home" || key === "End";
    if (tag === "INPUT" && element.type === "number") {
        return /^[0-9.+-]$/.test(key) || isChosen;
    }
    return isChosen && (["INPUT", "SELECT", "TEXTAREA"].includes(tag) ||
                        (tag === "BUTTON" && key === " ") ||
                        element.getAttribute("role") === "slider");
}

function listenToKeys() {
    addEventListener("keydown", (event) => {
        const {key} = event;
        if ((event.ctrlKey || event.metaKey) && !event.altKey) {
            const order = {z: event.shiftKey ? "redo" : "undo", Z: "redo", y: "redo"}[key];
            if (order && !event.target.closest("dialog")) {
                event.preventDefault();
                store.edit({do: order});
            }
            return;
        }
        if (event.altKey || takesKey(event.target, key)) {
            return;
        }
        if (event.shiftKey && panKeys[key]) {
            event.preventDefault();
            viewer.pan(...panKeys[key].map((direction) => direction * 40 * devicePixelRatio));
        } else if (keys[key] && !(event.repeat && key === "b")) {
            event.preventDefault();
            keys[key]();
        }
    });
    addEventListener("keyup", (event) => {
        if (event.key === "b") {
            viewer.holdBefore(false);
        }
    });
    addEventListener("blur", () => viewer.holdBefore(false));
}

function listenToBar() {
    const on = (id, action) => byId(id).addEventListener("click", action);
    on("undo", () => store.edit({do: "undo"}));
    on("redo", () => store.edit({do: "redo"}));
    on("fit", () => viewer.fit());
    on("actual-size", () => viewer.actualSize());
    on("zoom-in", () => viewer.zoom(1.25));
    on("zoom-out", () => viewer.zoom(0.8));
    on("open-help", () => byId("help").showModal());
    for (const button of document.querySelectorAll("dialog .close")) {
        button.addEventListener("click", () => button.closest("dialog").close());
    }
    byId("ground").addEventListener("change", (event) => viewer.setGround(event.target.value));
    byId("renderer").addEventListener(
        "change", (event) => store.edit({do: "renderer", name: event.target.value}));
}

async function start() {
    await store.load();
    viewer = new Viewer();
    timeline = new Timeline(viewer);
    makeControls((tried) => viewer.move(tried));
    makePresets();
    makeCompare(viewer);
    makeOutput();
    listenToBar();
    listenToKeys();
    listenToDrops();
    viewer.addEventListener("shown", showPicture);
    store.addEventListener("state", showState);
    store.addEventListener("frame", showFrame);
    addEventListener("focus", () => store.refresh().catch((error) => tell(error.message, true)));
    store.take(store.state);
    viewer.fit();
    document.body.dataset.ready = true;
}

start().catch((error) => tell(error.message, true));
