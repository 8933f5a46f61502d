// A browser for the tests, and the pages that it opens: what the sample and a model of hostile names are made to.

import assert from 'node:assert/strict';
import {execFileSync} from 'node:child_process';
import {mkdtempSync, readFileSync, rmSync, writeFileSync} from 'node:fs';
import {createRequire} from 'node:module';
import {tmpdir} from 'node:os';
import {join} from 'node:path';

const {chromium} = createRequire(join(process.env.ZR_PACKAGES, 'package.json'))('playwright-core');

export class Browser {
    #folder = mkdtempSync(join(tmpdir(), 'zr-catalogue-'));
    #browser;

    async start() {
        // What a processor alone draws quickly: the model as a graphics card would, the page itself plainly.
        const args = [
            '--no-sandbox', '--use-angle=swiftshader', '--enable-unsafe-swiftshader', '--disable-gpu-rasterization',
        ];
        this.#browser = await chromium.launch({executablePath: 'chromium', args}).catch(
            () => chromium.launch({executablePath: '/usr/bin/chromium', args}));
    }

    async stop() {
        await this.#browser?.close();
        rmSync(this.#folder, {recursive: true, force: true});
    }

    in(name) { return join(this.#folder, name); }

    makeSample() {
        execFileSync(process.env.ZR_SAMPLE, [this.in('sample.glb')]);
        this.make('sample.glb', ['sample.html', 'sample.svg']);
    }

    make(model, outputs, ...options) {
        const files = outputs.flatMap(each => ['-o', this.in(each)]);
        execFileSync(process.env.ZR_SHEET, ['make', this.in(model), ...files, ...options]);
    }

    /** Runs a script, from which a sheet with glasses can come. */
    run(...lines) {
        this.write('script.zrs', lines.join('\n'));
        execFileSync(process.env.ZR_SHEET, ['run', this.in('script.zrs')], {cwd: this.#folder});
    }

    write(name, text) { writeFileSync(this.in(name), text); }

    read(name) { return readFileSync(this.in(name), 'utf8'); }

    /** A page that fails the test when it complains or asks for anything but itself. */
    async open(name, options = {}) {
        const page = await this.#browser.newPage({viewport: {width: 1100, height: 640}, ...options});
        page.faults = [];
        page.on('console', message => {
            if (['error', 'warning'].includes(message.type()) && !/GPU stall|swiftshader/i.test(message.text()))
                page.faults.push(message.text());
        });
        page.on('pageerror', error => page.faults.push(error.message));
        page.on('dialog', dialog => { page.faults.push('dialog'); dialog.dismiss(); });
        const own = `file://${this.in(name)}`;
        page.on('request', request => {
            if (request.url() !== own && !request.url().startsWith('data:')) page.faults.push(request.url());
        });
        await page.goto(own);
        return page;
    }
}

/** Closes a page that nothing went wrong in. */
export async function close(page) {
    assert.deepEqual(page.faults, []);
    await page.close();
}

/** The parts of a glTF file: tetrahedra in a row, each a little larger than the one before, called by these names. */
export function modelOf(names) {
    const bytes = Buffer.alloc(24 + 48 * names.length);
    [0, 2, 1, 0, 1, 3, 0, 3, 2, 1, 2, 3].forEach((value, i) => bytes.writeUInt16LE(value, 2 * i));
    const sizes = names.map((_, i) => 1 + i / 8);
    sizes.forEach((size, i) => [0, 0, 0, size, 0, 0, 0, size, 0, 0, 0, size].forEach(
        (value, k) => bytes.writeFloatLE(value, 24 + 48 * i + 4 * k)));
    return JSON.stringify({
        asset: {version: '2.0'}, scene: 0, scenes: [{nodes: names.map((_, i) => i)}],
        nodes: names.map((name, i) => ({name, mesh: i, translation: [2 * i, 0, 0]})),
        meshes: names.map((name, i) => ({name, primitives: [{attributes: {POSITION: i + 1}, indices: 0}]})),
        buffers: [{byteLength: bytes.length, uri: `data:application/octet-stream;base64,${bytes.toString('base64')}`}],
        bufferViews: [{buffer: 0, byteOffset: 0, byteLength: 24},
            ...names.map((_, i) => ({buffer: 0, byteOffset: 24 + 48 * i, byteLength: 48}))],
        accessors: [{bufferView: 0, componentType: 5123, count: 12, type: 'SCALAR'}, ...sizes.map((size, i) => (
            {bufferView: i + 1, componentType: 5126, count: 4, type: 'VEC3', min: [0, 0, 0], max: [size, size, size]}))],
    });
}

/** Puts so many parts without item and extent before those of a page, which count on from there. */
export function withTinyParts(html, count) {
    return html.replace(/(<script type="application\/json" id="data">)(.*?)(?=<\/script>)/s, (_, start, text) => {
        const data = JSON.parse(text);
        const {parts, shapes} = data.scene;
        const point = {low: [0, 0, 0], size: [0, 0, 0], positions: 'AAAAAAAA', indices: 'AAAAAAAA', wide: false};
        const places = Buffer.from(data.scene.places, 'base64');
        const tiny = Buffer.alloc(48 * count);
        for (let i = 0; i < count; ++i) places.copy(tiny, 48 * i, places.length - 48);
        data.scene.shapes = [...shapes, point];
        data.scene.places = Buffer.concat([tiny, places]).toString('base64');
        data.scene.parts = [...Array.from({length: count}, (_, i) => ({id: `tiny-${i}`, shape: shapes.length, name: ''})), ...parts];
        return start + JSON.stringify(data).replaceAll('<', '\\u003c');
    });
}

/** The text of each page of what a page prints. */
export async function printed(page, file, options) {
    await page.pdf({path: file, format: 'A4', ...options});
    return execFileSync('pdftotext', ['-layout', file, '-']).toString().split('\f').slice(0, -1);
}

/**
 * What an element shows, as pixels: how many colours, and the middle of those that look like `color`, in pixels of the
 * page.
 */
export async function pixelsOf(page, selector, color) {
    const element = page.locator(selector);
    const picture = (await element.screenshot()).toString('base64');
    const box = await element.boundingBox();
    const found = await page.evaluate(async ([text, wanted]) => {
        const image = new Image();
        image.src = `data:image/png;base64,${text}`;
        await image.decode();
        const canvas = new OffscreenCanvas(image.width, image.height);
        const context = canvas.getContext('2d');
        context.drawImage(image, 0, 0);
        const {data} = context.getImageData(0, 0, image.width, image.height);
        const colors = new Set();
        let [count, x, y] = [0, 0, 0];
        for (let i = 0; i < data.length; i += 4) {
            colors.add(data[i] << 16 | data[i + 1] << 8 | data[i + 2]);
            if (!wanted || wanted.some((value, k) => Math.abs(data[i + k] - value) > 24)) continue;
            ++count;
            x += i / 4 % image.width;
            y += Math.floor(i / 4 / image.width);
        }
        return {colors: colors.size, count, x: x / count, y: y / count};
    }, [picture, color]);
    return {...found, x: box.x + found.x, y: box.y + found.y};
}
