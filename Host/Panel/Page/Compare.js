// Compares two looks: A, which is being edited, and B, which was kept.

import {byId} from "./Dom.js";
import {store} from "./Store.js";

export function makeCompare(viewer) {
    const choice = byId("compare");
    choice.addEventListener("change", async () => {
        const mode = choice.value;
        if ((mode === "other" || mode === "sides") && !store.state.hasOther) {
            await store.edit({do: "keep"});
        }
        viewer.setCompare(mode);
    });
    byId("keep").addEventListener("click", () => store.edit({do: "keep"}));
    byId("swap").addEventListener("click", () => store.edit({do: "swap"}));
    const before = byId("before");
    before.addEventListener("pointerdown", () => viewer.holdBefore(true));
    for (const name of ["pointerup", "pointerleave", "blur"]) {
        before.addEventListener(name, () => viewer.holdBefore(false));
    }
    store.addEventListener("state", () => { byId("swap").disabled = !store.state.hasOther; });
}
