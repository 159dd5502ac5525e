// What all parts of the page share: the server's state, and the frame that is looked at.

import {getJson, postJson} from "./Api.js";
import {tell} from "./Dom.js";

class Store extends EventTarget {
    schema = [];
    state = null;
    frame = 0;
    frames = [0];
    values = {};
    lines = {};
    #orders = Promise.resolve();
    #gesture = {name: "", count: 0, time: 0};

    async load() {
        const [schema, state] = await Promise.all([getJson("schema"), getJson("state")]);
        this.schema = schema.parameters.filter((parameter) => parameter.option);
        this.take(state);
    }

    /// Takes a state that the server sent.
    take(state) {
        const footage = JSON.stringify(state.footage);
        const isNew = !this.state || JSON.stringify(this.state.footage) !== footage;
        this.state = state;
        if (isNew) {
            this.frames = state.footage.frames.flatMap(
                ([first, last]) => Array.from({length: last - first + 1}, (_, i) => first + i));
            this.frame = this.frames.includes(this.frame) ? this.frame : this.frames[0];
            this.dispatchEvent(new Event("footage"));
        }
        this.dispatchEvent(new Event("state"));
    }

    async refresh() {
        const state = await getJson("state");
        if (state.revision !== this.state.revision) {
            this.take(state);
        }
    }

    /// Has the server do something, after what it was asked before.
    send(path, order) {
        const sent = this.#orders.then(async () => {
            try {
                const answer = await postJson(path, order);
                if (answer && answer.revision) {
                    this.take(answer);
                }
                return answer;
            } catch (error) {
                tell(error.message, true);
                this.take(this.state); // controls go back to what holds
                return null;
            }
        });
        this.#orders = sent;
        return sent;
    }

    edit(order) {
        return this.send("edit", {frame: this.frame, ...order});
    }

    /// A name for changes that follow each other closely, which undo takes back as one.
    gesture(name) {
        const now = performance.now();
        if (name !== this.#gesture.name || now - this.#gesture.time > 1000) {
            this.#gesture.name = name;
            this.#gesture.count += 1;
        }
        this.#gesture.time = now;
        return `${name} ${this.#gesture.count} ${performance.timeOrigin}`;
    }

    get isMoving() {
        return this.frames.length > 1;
    }

    setFrame(frame) {
        if (frame !== this.frame) {
            this.frame = frame;
            this.dispatchEvent(new Event("frame"));
        }
    }

    /// Goes so many frames on, or back.
    step(count) {
        const index = this.frames.indexOf(this.frame) + count;
        this.setFrame(this.frames[Math.min(Math.max(index, 0), this.frames.length - 1)]);
    }

    /// Asks for the values at the frame, and the lines that render it.
    async loadFrame() {
        const frame = this.frame;
        const answer = await getJson("frame", {frame});
        if (frame === this.frame) {
            this.values = answer.values;
            this.lines = answer.lines;
            this.dispatchEvent(new Event("values"));
        }
    }
}

export const store = new Store();
