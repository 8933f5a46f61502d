// A picture of part numbers and depths: tells what is under the pointer and whether a point is covered.

import {NearestFilter, WebGLRenderTarget} from 'three';

// Shares of the depth by which a point may lie behind what is drawn there: its own part may slope, others may not.
const kOwnSlack = 0.008;
const kSlack = 0.0004;

export class NumberPicture {
    #target = new WebGLRenderTarget(1, 1, {count: 2, minFilter: NearestFilter, magFilter: NearestFilter});
    #numbers = new Uint8Array(4);
    #depths = new Uint8Array(4);
    #width = 1;
    #height = 1;

    /** Takes the picture. `layer` holds what can be met; `width` and `height` are the canvas's, in pixels. */
    take(renderer, scene, camera, material, layer, width, height) {
        this.#resize(width, height);
        camera.layers.set(layer);
        scene.overrideMaterial = material;
        renderer.setRenderTarget(this.#target);
        renderer.clear();
        renderer.render(scene, camera);
        renderer.readRenderTargetPixels(this.#target, 0, 0, this.#width, this.#height, this.#numbers, undefined, 0);
        renderer.readRenderTargetPixels(this.#target, 0, 0, this.#width, this.#height, this.#depths, undefined, 1);
        renderer.setRenderTarget(null);
        scene.overrideMaterial = null;
        camera.layers.enableAll();
    }

    /** The number at a place from (0, 0), top left, to (1, 1); 0 where nothing is. */
    numberAt(x, y) {
        const at = this.#at(Math.floor(x * this.#width), Math.floor((1 - y) * this.#height));
        return at < 0 ? 0 : threeBytes(this.#numbers, at);
    }

    /** Does anything lie before a point, at a depth from 0 to 1, of part `number`? Places off the picture are covered. */
    isCovered(x, y, depth, number) {
        const column = Math.floor(x * this.#width);
        const row = Math.floor((1 - y) * this.#height);
        for (let dx = -1; dx <= 1; ++dx) {
            for (let dy = -1; dy <= 1; ++dy) if (this.#shows(column + dx, row + dy, depth, number)) return false;
        }
        return true;
    }

    #shows(column, row, depth, number) {
        const at = this.#at(column, row);
        if (at < 0) return false;
        const found = threeBytes(this.#numbers, at);
        const drawn = threeBytes(this.#depths, at) / 0xFFFFFF;
        return found === 0 || drawn >= depth - (found === number ? kOwnSlack : kSlack);
    }

    #at(column, row) {
        const isInside = column >= 0 && row >= 0 && column < this.#width && row < this.#height;
        return isInside ? 4 * (row * this.#width + column) : -1;
    }

    #resize(width, height) {
        if (width === this.#width && height === this.#height) return;
        this.#width = width;
        this.#height = height;
        this.#target.setSize(width, height);
        this.#numbers = new Uint8Array(4 * width * height);
        this.#depths = new Uint8Array(4 * width * height);
    }
}

function threeBytes(bytes, at) {
    return bytes[at] * 65536 + bytes[at + 1] * 256 + bytes[at + 2];
}
