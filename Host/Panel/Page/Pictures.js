// Decides which pictures to request and when. While something changes, requests small previews of
// the newest state, one at a time for each layer. Afterwards requests the pictures that the command
// would write.

import {getPicture} from "./Api.js";
import {tell} from "./Dom.js";
import {store} from "./Store.js";

const manyPixels = 4e6;

/// Runs one request at a time. Of the requests that arrive meanwhile only the last is run.
class Newest {
    #isBusy = false;
    #waiting = null;

    run(task) {
        if (this.#isBusy) {
            this.#waiting = task;
            return;
        }
        this.#isBusy = true;
        task().catch((error) => tell(error.message, true)).finally(() => {
            this.#isBusy = false;
            const next = this.#waiting;
            this.#waiting = null;
            if (next) {
                this.run(next);
            }
        });
    }

    forget() {
        this.#waiting = null;
    }

    get isBusy() {
        return this.#isBusy;
    }
}

/// One of the pictures that the viewer composes: the result, the source, or the result of the other
/// look.
class Layer {
    shown = null;  // the last picture: {bitmap, milliseconds, renderer, frame, view, isStill, key}
    #key = "";
    #previews = new Newest();
    #abort = null;

    constructor(paths, query, changed) {
        this.paths = paths;
        this.query = query;
        this.changed = changed;
    }

    /// Requests a preview of `view`. `tried` has values that the user tries but has not set.
    preview(frame, view, tried = {}) {
        this.#key = "";
        this.#abort?.abort();
        this.#abort = null;
        this.#runPreview(frame, view, tried);
    }

    #runPreview(frame, view, tried) {
        this.#previews.run(async () => {
            const query = {...this.query, ...tried, frame, ...view};
            const picture = await getPicture(this.paths.preview, query);
            if (!this.#key || this.shown?.key !== this.#key) {
                this.#show({...picture, frame, view, isStill: false});
            }
        });
    }

    /// Requests the whole frame without loss, unless it was requested already. If the frame is
    /// large, requests a preview of `view` first.
    async rest(frame, revision, view) {
        const key = `${frame} ${revision}`;
        if (key === this.#key) {
            return;
        }
        this.#key = key;
        this.#previews.forget();
        const {width, height} = store.state.footage;
        if (width * height > manyPixels) {
            this.#runPreview(frame, view, {});
        }
        this.#abort?.abort();
        const abort = new AbortController();
        this.#abort = abort;
        try {
            const picture = await getPicture(this.paths.still, {...this.query, frame}, abort.signal);
            if (this.#key === key) {
                const {width, height} = picture.bitmap;
                this.#show({...picture, frame, view: {x: 0, y: 0, width, height}, isStill: true, key});
            }
        } catch (error) {
            if (error.name !== "AbortError") {
                this.#key = "";
                tell(error.message, true);
            }
        }
    }

    /// Whether a preview is being loaded.
    get isBusy() {
        return this.#previews.isBusy;
    }

    forget() {
        this.#key = "";
        this.shown?.bitmap.close();
        this.shown = null;
    }

    #show(picture) {
        this.shown?.bitmap.close();
        this.shown = picture;
        this.changed(this);
    }
}

export function makeLayers(changed) {
    const drawn = {preview: "preview", still: "still"};
    return {
        effect: new Layer(drawn, {side: "current"}, changed),
        other: new Layer(drawn, {side: "other"}, changed),
        source: new Layer({preview: "source-preview", still: "source"}, {}, changed),
    };
}

/// Returns a key that changes if the source pictures change.
export const footageKey = () => `${store.state.footage.name} ${store.state.footage.dropped}`;
