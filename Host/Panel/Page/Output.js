// Output: shell lines, files and rendering.

import {addressOf, getJson} from "./Api.js";
import {byId, make, tell} from "./Dom.js";
import {store} from "./Store.js";

const lineNames = {
    still: "This frame, as it is shown: a PNG of 8 bits",
    render: "All of it",
    ffmpeg: "ffmpeg",
    melt: "melt",
    gstreamer: "GStreamer",
};

const endings = {
    picture: ["png", "tif", "exr", "jpg"],
    sequence: ["#.png", "#.tif", "#.exr", "mp4", "mov", "mkv", "webm", "gif"],
    movie: ["mp4", "mov", "mkv", "webm", "gif", "#.png", "#.exr"],
};

const hasKeys = () => Object.values(store.state.parameters).some(({animated}) => animated);

function note(name) {
    return (name === "ffmpeg" || name === "gstreamer") && hasKeys()
        ? " (it knows no keys: the values of this frame)" : "";
}

/// Lets lines break between words only, not at hyphens within them.
const wordsOf = (line) => line.split(" ").flatMap(
    (word) => [make("span", {}, word), " "]).slice(0, -1);

function updateLines() {
    if (!byId("output").open) {
        return;
    }
    byId("lines").replaceChildren(...Object.entries(lineNames).map(([name, title]) => {
        const line = store.lines[name] ?? "";
        return make("div", {class: "command-line"},
            make("h3", {}, title + note(name)),
            make("code", {id: `line-${name}`, tabindex: 0}, ...wordsOf(line)),
            make("button", {type: "button", "aria-label": `Copy the line: ${title}`,
                            onclick: () => copy(line)}, "Copy"));
    }));
}

async function copy(text) {
    try {
        await navigator.clipboard.writeText(text);
        tell("Copied.");
    } catch {
        tell("The browser doesn't allow to copy; select the line instead.", true);
    }
}

function updateFolder() {
    const {canSave, outputFolder, footage} = store.state;
    byId("folder").textContent = canSave
        ? `Files go into ${outputFolder}.`
        : "Without --output-folder nothing is written on the machine: files are downloaded.";
    byId("render-part").hidden = !canSave;
    byId("save-names").hidden = !canSave;
    byId("save-still").textContent = canSave ? "Save still" : "Download still";
    byId("save-preset").textContent = canSave ? "Save preset" : "Download preset";
    const ending = byId("render-ending");
    const wanted = endings[footage.kind];
    if (ending.dataset.kind !== footage.kind) {
        ending.dataset.kind = footage.kind;
        ending.replaceChildren(...wanted.map((name) => make("option", {value: name}, `.${name}`)));
    }
}

function download(path, query) {
    const link = make("a", {href: addressOf(path, query), download: ""});
    document.body.append(link);
    link.click();
    link.remove();
}

async function save(path, extra, address) {
    if (!store.state.canSave) {
        download(...address);
        return;
    }
    const name = byId("save-name").value;
    const order = {name, replace: byId("save-replace").checked, ...extra};
    if (await store.send(path, order)) {
        tell(`Saved ${name}.`);
    }
}

// Rendering.

let watch = 0;

function showRendering(job) {
    const isRunning = job && job.status === null;
    byId("render").disabled = Boolean(isRunning);
    byId("stop").disabled = !isRunning;
    byId("progress").hidden = !job;
    if (!job) {
        return;
    }
    const ended = {0: "done", 2: "done, but not all", 130: "stopped"};
    const words = isRunning ? `${job.done} of ${job.frames} frames`
                            : `${job.done} frames, ${ended[job.status] ?? "failed"}`;
    byId("progress-bar").max = job.frames;
    byId("progress-bar").value = job.done;
    byId("progress-text").textContent = `${job.name}: ${words}`;
    byId("progress-lines").textContent = job.lines.replaceAll("tesselune: ", "");
}

async function watchRendering() {
    clearTimeout(watch);
    const job = await getJson("rendering");
    showRendering(job);
    if (job && job.status === null) {
        watch = setTimeout(watchRendering, 250);
    }
}

async function render() {
    const name = `${byId("render-name").value}.${byId("render-ending").value}`;
    if (await store.send("render", {name, replace: byId("render-replace").checked})) {
        watchRendering();
    }
}

export function makeOutput() {
    byId("open-output").addEventListener("click", () => {
        byId("output").showModal();
        store.loadFrame();
        updateLines();
        watchRendering();
    });
    store.addEventListener("values", updateLines);
    store.addEventListener("state", updateFolder);
    byId("save-still").addEventListener("click", () => save(
        "save-still", {frame: store.frame}, ["still", {frame: store.frame, download: 1}]));
    byId("save-preset").addEventListener("click", () => save("save-preset", {}, ["preset", {}]));
    byId("render").addEventListener("click", render);
    byId("stop").addEventListener("click", async () => {
        await store.send("stop", {});
        watchRendering();
    });
    updateFolder();
}
