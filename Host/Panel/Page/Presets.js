// Presets, shown as thumbnails of the current picture.

import {addressOf} from "./Api.js";
import {byId, make, tell} from "./Dom.js";
import {store} from "./Store.js";

let shown = "";

export function updatePresets() {
    const {presets, footage, renderer} = store.state;
    const key = JSON.stringify([presets, footage, renderer, store.isMoving && store.frame]);
    if (key === shown) {
        return;
    }
    shown = key;
    byId("presets").replaceChildren(...presets.map(({name, description}) => make("button", {
        type: "button", class: "preset", title: description || name,
        onclick: () => store.edit({do: "preset", name})},
        make("img", {alt: "", loading: "lazy",
                     src: addressOf("thumbnail", {preset: name, frame: store.frame,
                                                  of: `${store.state.revision}`})}),
        make("span", {}, name))));
}

export function makePresets() {
    byId("surprise").addEventListener("click", () => store.edit({do: "surprise"}));
    byId("load-preset").addEventListener("click", () => byId("preset-file").click());
    byId("preset-file").addEventListener("change", async (event) => {
        const [file] = event.target.files;
        event.target.value = "";
        if (file) {
            loadPreset(file);
        }
    });
}

export async function loadPreset(file) {
    if (await store.edit({do: "preset-file", content: await file.text()})) {
        tell(`Loaded ${file.name}.`);
    }
}
