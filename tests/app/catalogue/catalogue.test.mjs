// What readers do with the catalogue, in a browser.

import assert from 'node:assert/strict';
import {after, before, test} from 'node:test';
import {Browser, close, modelOf, pixelsOf} from './browser.mjs';

const browser = new Browser();
before(async () => {
    browser.makeSample();
    await browser.start();
});
after(() => browser.stop());

const row = item => `tr[data-item="${item}"]`;
const spot = item => `.hotspot[data-item="${item}"]`;
const balloon = item => `#drawing .callout[data-item="${item}"]`;
const fillOf = (page, selector) => page.locator(selector).first().evaluate(each => getComputedStyle(each).fill);
const firstCells = (page, column, count) => page.locator(`tbody td.${column}`).evaluateAll(
    (cells, most) => cells.slice(0, most).map(cell => cell.textContent), count);
const chosenRows = page => page.locator('tr[aria-selected="true"]').evaluateAll(rows => rows.map(each => each.dataset.item));

/** Clicks into the middle of what is seen of an area. */
async function clickInside(page, selector) {
    const place = await page.locator(selector).first().evaluate(shape => {
        const box = shape.getBoundingClientRect();
        for (let i = 1; i < 400; ++i) {
            const x = box.x + box.width * (i * 0.618034 % 1);
            const y = box.y + box.height * (i * 0.754878 % 1);
            if (document.elementFromPoint(x, y) === shape) return {x, y};
        }
        return null;
    });
    assert.ok(place, `${selector} is covered`);
    await page.mouse.click(place.x, place.y);
}

async function openModel(options) {
    const page = await browser.open('sample.html', options);
    await page.click('[data-view=model]');
    await page.waitForSelector('#model .balloon[style]');
    return page;
}

test('A row lights the areas and the balloon of its item, and tells about it', async () => {
    const page = await browser.open('sample.html');
    const before = await fillOf(page, spot(4));
    await page.hover(row(4));
    const hovered = await fillOf(page, spot(4));
    await page.click(row(4));
    const chosen = await fillOf(page, spot(4));
    assert.equal(new Set([before, hovered, chosen]).size, 3);
    assert.equal(await page.locator(`${spot(4)}.chosen`).count(), await page.locator(spot(4)).count());
    assert.equal(await page.getAttribute(balloon(4), 'aria-pressed'), 'true');
    assert.equal(await fillOf(page, spot(1)), before);
    assert.match(await page.textContent('#details'), /Hex Bolt M10x36.*Steel 8\.8/s);
    await close(page);
});

test('An area and a balloon choose their row and bring it into view', async () => {
    const page = await browser.open('sample.html', {viewport: {width: 1300, height: 520}});
    const isInView = item => page.locator(row(item)).evaluate(each => {
        const box = each.getBoundingClientRect();
        const frame = document.getElementById('rows').getBoundingClientRect();
        return box.top >= frame.top && box.bottom <= frame.bottom + 1;
    });
    assert.equal(await isInView(34), false);
    await clickInside(page, spot(34));
    assert.deepEqual(await chosenRows(page), ['34']);
    assert.equal(await isInView(34), true);
    await page.hover(`${balloon(21)} .label`);
    assert.equal(await page.locator(`${row(21)}.hovered`).count(), 1);
    await page.click(`${balloon(2)} .label`);
    assert.deepEqual(await chosenRows(page), ['2']);
    assert.equal(await isInView(2), true);
    await close(page);
});

test('The paper moves until the chosen item is seen', async () => {
    const page = await browser.open('sample.html');
    await page.locator('[data-zoom=in]').evaluate(button => { for (let i = 0; i < 5; ++i) button.click(); });
    const isInView = item => page.locator(spot(item)).first().evaluate(each => {
        const box = each.getBoundingClientRect();
        const frame = document.getElementById('drawing').getBoundingClientRect();
        return box.left >= frame.left && box.right <= frame.right && box.top >= frame.top && box.bottom <= frame.bottom;
    });
    assert.equal(await isInView(9), false);
    await page.click(row(9));
    assert.equal(await isInView(9), true);
    await close(page);
});

test('Search and filters leave what matches, and say so when nothing does', async () => {
    const page = await browser.open('sample.html');
    await page.fill('#query', 'bolt m10');
    assert.deepEqual(await firstCells(page, 'name', 9), ['Hex Bolt M10x36']);
    await page.fill('#query', 'no such part');
    assert.equal(await page.locator('.none').isVisible(), true);
    await page.fill('#query', '');
    await page.locator('#filters select').last().selectOption({label: 'Steel 8.8'});
    const names = await firstCells(page, 'name', 99);
    assert.ok(names.length > 1 && names.every(name => name.startsWith('Hex Bolt')), names.join());
    assert.match(await page.textContent('#count'), new RegExp(`^${names.length} of 34`));
    await page.locator('#filters select').last().selectOption({index: 0});
    await page.locator('#filters select').first().selectOption({index: 2});
    assert.ok(await page.locator('tbody tr').count() > 0);
    assert.equal(await page.locator('tbody tr:not(.unseen)').count(), 0);
    await close(page);
});

test('Columns sort as numbers, up, down and back to the list\'s own order', async () => {
    const page = await browser.open('sample.html');
    const own = await firstCells(page, 'label', 99);
    const button = page.locator('th.quantity button');
    await button.click();
    const up = (await firstCells(page, 'quantity', 99)).map(Number);
    assert.deepEqual(up, [...up].sort((a, b) => a - b));
    assert.equal(await page.getAttribute('th.quantity', 'aria-sort'), 'ascending');
    await button.click();
    assert.deepEqual((await firstCells(page, 'quantity', 99)).map(Number), up.reverse());
    await button.click();
    assert.deepEqual(await firstCells(page, 'label', 99), own);
    await close(page);
});

test('Everything can be reached with the keyboard', async () => {
    const page = await browser.open('sample.html');
    await page.keyboard.press('/');
    await page.keyboard.type('hex');
    await page.keyboard.press('ArrowDown');
    assert.deepEqual(await chosenRows(page), ['4']);
    await page.keyboard.press('ArrowDown');
    assert.deepEqual(await chosenRows(page), ['10']);
    const outline = await page.locator(row(10)).evaluate(each => getComputedStyle(each).outlineStyle);
    assert.equal(outline, 'solid');
    await page.keyboard.press('Escape');
    assert.deepEqual(await chosenRows(page), []);
    await page.locator(balloon(8)).focus();
    await page.keyboard.press('ArrowRight');
    const next = await page.evaluate(() => document.activeElement.dataset.item);
    assert.notEqual(next, '8');
    assert.deepEqual(await chosenRows(page), [next]);
    await page.locator('[data-view=drawing][role=radio]').focus();
    await page.keyboard.press('ArrowRight');
    assert.equal(await page.getAttribute('#main', 'data-view'), 'both');
    await close(page);
});

test('The model is drawn, and a part of it that is clicked chooses its row and its area', async () => {
    const page = await openModel();
    await page.click('[data-act=callouts]');
    assert.ok((await pixelsOf(page, '#model canvas')).colors > 200);
    await page.click(row(9));
    await page.mouse.move(5, 5);
    const {count, x, y} = await pixelsOf(page, '#model canvas', [230, 145, 30]);
    assert.ok(count > 60, `${count} pixels of the chosen part`);
    await page.keyboard.press('Escape');
    await page.mouse.click(x, y);
    assert.deepEqual(await chosenRows(page), ['9']);
    assert.equal(await page.locator(`${spot(9)}.chosen`).count(), 1);
    await page.mouse.click(x - 300, y);
    assert.deepEqual(await chosenRows(page), []);
    await close(page);
});

test('A part alone fills the view with its callout, and Escape brings the others back', async () => {
    const page = await openModel();
    const shown = () => page.locator('#model .balloon:visible').evaluateAll(all => all.map(each => each.dataset.item));
    const all = await shown();
    await page.click(row(2));
    await page.click('[data-act=isolate]');
    await page.waitForFunction(() => document.querySelectorAll('#model .balloon:not([hidden])').length === 1);
    assert.deepEqual(await shown(), ['2']);
    await page.click(row(1));
    await page.waitForFunction(() => document.querySelector('#model .balloon:not([hidden])').dataset.item === '1');
    await page.keyboard.press('Escape');
    await page.waitForFunction(() => document.querySelectorAll('#model .balloon:not([hidden])').length > 1);
    assert.deepEqual(await shown(), all);
    assert.deepEqual(await chosenRows(page), ['1']);
    await close(page);
});

test('Callouts follow the turning model and dim while their anchors are covered', async () => {
    const page = await openModel();
    const state = () => page.locator('#model .balloon').evaluateAll(all => all.map(each => ({
        item: each.dataset.item, place: each.style.transform, isDim: each.classList.contains('dim'),
    })));
    const before = await state();
    // The picture's own callouts know already which anchors are covered.
    const dashed = await page.locator('#drawing .callout').evaluateAll(all => all
        .filter(each => [...each.querySelectorAll('.leader')].every(leader => leader.querySelector('[stroke-dasharray]')))
        .map(each => each.dataset.item));
    const dim = before.filter(each => each.isDim).map(each => each.item);
    assert.ok(dashed.length > 0 && dashed.every(item => dim.includes(item)), `${dashed} are covered, ${dim} dim`);
    await page.locator('#model canvas').focus();
    for (let i = 0; i < 18; ++i) await page.keyboard.press('ArrowRight');
    await page.waitForFunction(place => document.querySelector('#model .balloon').style.transform !== place, before[0].place);
    const turned = await state();
    assert.ok(turned.filter((each, i) => each.place !== before[i].place).length > 20);
    assert.ok(turned.some((each, i) => each.isDim && !before[i].isDim), 'what was before is behind now');
    await close(page);
});

test('Whatever parts are called, it stays text', async () => {
    const names = [
        '</script><script>alert(1)</script>', '<img src=x onerror=alert(2)>', '"><b onclick="alert(3)">\'&amp;',
        '\u202eeman esrever', 'bell\u0007 and\u0000 nul', '<!-- <script>', '{{script}} ${x} ]]>',
    ];
    browser.write('hostile.gltf', modelOf(names));
    browser.make('hostile.gltf', 'hostile.html');
    const page = await browser.open('hostile.html');
    const shown = await page.locator('tbody td.name').evaluateAll(cells => cells.map(cell => cell.textContent));
    for (const name of [names[0], names[1], names[2], names[3], names[5], names[6]]) assert.ok(shown.includes(name), name);
    assert.equal(await page.locator('img, b, script:not(#data) + script + *').count(), 0);
    assert.equal(await page.locator('tbody td.name').first().getAttribute('dir'), 'auto');
    for (let item = 1; item <= names.length; ++item) await page.click(row(item));
    await page.click('[data-view=both]');
    await page.waitForSelector('#model .balloon[style]');
    await close(page);
});

test('The policy forbids what a script could fetch or write into the page', async () => {
    const page = await browser.open('sample.html');
    const refused = await page.evaluate(async () => {
        const script = document.createElement('script');
        script.textContent = 'window.isInjected = true';
        document.body.append(script);
        return await fetch('https://example.invalid/').then(() => false, () => window.isInjected === undefined);
    });
    assert.equal(refused, true);
    assert.ok(page.faults.length >= 2 && page.faults.every(fault => /Content Security Policy/.test(fault)), page.faults.join('\n'));
    await page.close();
});

test('In the dark lines stay readable, and the reader has the last word', async () => {
    const light = channel => channel.match(/\d+/g).slice(0, 3).reduce((sum, value) => sum + Number(value), 0);
    const contrast = async page => {
        const line = await page.locator('#drawing .model-lines path').first().evaluate(each => getComputedStyle(each).stroke);
        return light(line) - light(await fillOf(page, spot(1)));
    };
    const page = await browser.open('sample.html', {colorScheme: 'dark'});
    assert.ok(await contrast(page) > 400);
    const text = await page.locator(`${balloon(1)} text`).evaluate(each => getComputedStyle(each).fill);
    assert.ok(light(text) - light(await fillOf(page, `${balloon(1)} circle`)) > 400);
    await page.click('#theme');
    assert.ok(await contrast(page) < -400);
    await close(page);
});

test('Print has the drawing and all rows on light paper, and nothing to press', async () => {
    const page = await browser.open('sample.html', {colorScheme: 'dark'});
    await page.emulateMedia({media: 'print'});
    assert.equal(await fillOf(page, spot(1)), 'rgb(255, 255, 255)');
    assert.equal(await page.locator('.tools:visible, input:visible, #theme:visible').count(), 0);
    const rows = await page.locator('#rows').evaluate(each => [each.scrollHeight, each.clientHeight]);
    assert.equal(rows[0], rows[1]);
    assert.ok((await page.locator('#drawing > svg').boundingBox()).height > 400);
    await close(page);
});

test('The SVG alone follows a stylesheet of its page, and its areas can be clicked', async () => {
    const page = await browser.open('sample.svg', {viewport: {width: 1700, height: 1100}});
    await page.evaluate(() => {
        const style = document.createElementNS('http://www.w3.org/2000/svg', 'style');
        style.textContent = '.hotspot{fill:rgb(1, 2, 3)} .outline{stroke-width:7px} .callout circle{fill:rgb(4, 5, 6)}';
        document.documentElement.append(style);
        document.addEventListener('click', event => { window.clicked = event.target.dataset.item; });
    });
    assert.equal(await fillOf(page, spot(1)), 'rgb(1, 2, 3)');
    assert.equal(await fillOf(page, '.callout circle'), 'rgb(4, 5, 6)');
    assert.equal(await page.locator('.outline').first().evaluate(each => getComputedStyle(each).strokeWidth), '7px');
    await clickInside(page, spot(7));
    assert.equal(await page.evaluate(() => window.clicked), '7');
    await close(page);
});
