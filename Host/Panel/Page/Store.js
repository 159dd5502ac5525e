// State shared by all parts of the page: the server's state and the current frame.

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

    /// Takes over a state sent by the server.
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

    /// Sends an order to the server after all earlier orders were answered.
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
                this.take(this.state); // shows the unchanged values in the controls again
                return null;
            }
        });
        this.#orders = sent;
        return sent;
    }

    edit(order) {
        return this.send("edit", {frame: this.frame, ...order});
    }

    /// Returns a name for the current gesture. Calls with the same `name` within a second of each
    /// other return the same gesture. Undo takes back all changes of a gesture together.
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

    /// Moves by `count` frames, back if negative.
    step(count) {
        const index = this.frames.indexOf(this.frame) + count;
        this.setFrame(this.frames[Math.min(Math.max(index, 0), this.frames.length - 1)]);
    }

    /// Loads the values and shell lines of the current frame.
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
