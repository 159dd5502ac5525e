// Which pictures are asked for, and when: while something moves, small ones of the newest state and
// one at a time; at rest, those that the command would write.

import {getPicture} from "./Api.js";
import {tell} from "./Dom.js";
import {store} from "./Store.js";

const manyPixels = 4e6;

/// Sends one request at a time. Of those that come meanwhile the last one is sent.
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

/// One of the pictures that lie over each other: the effect's, the source, or that of the other
/// look.
class Layer {
    shown = null;  // {bitmap, view, isStill}
    #key = "";
    #previews = new Newest();
    #abort = null;

    constructor(paths, query, changed) {
        this.paths = paths;
        this.query = query;
        this.changed = changed;
    }

    /// A picture of `view` with `tried` values.
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

    /// The whole frame without a loss, if it isn't here. One that takes long is preceded by a
    /// picture of `view`.
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

    /// Whether a preview is under way.
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

/// What a source's picture depends on, beside the frame.
export const footageKey = () => `${store.state.footage.name} ${store.state.footage.dropped}`;
