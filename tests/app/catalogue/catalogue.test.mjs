// What readers do with the catalogue, in a browser.

import assert from 'node:assert/strict';
import {after, before, test} from 'node:test';
import {Browser, close, modelOf, pixelsOf, printed, withTinyParts} from './browser.mjs';

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

/** Is a row seen whole, between the heading and what lies below the list? */
const isRowInView = (page, item) => page.locator(row(item)).evaluate(each => {
    const box = each.getBoundingClientRect();
    const top = document.querySelector('thead th').getBoundingClientRect().bottom;
    return box.top >= top - 1 && box.bottom <= document.getElementById('rows').getBoundingClientRect().bottom + 1;
});

/** Of the middles of what is found, once the page has drawn what it was told last. */
async function leastDistance(selector) {
    await new Promise(done => requestAnimationFrame(() => requestAnimationFrame(done)));
    const places = [...document.querySelectorAll(selector)].map(each => each.getBoundingClientRect())
        .map(({x, y, width, height}) => [x + width / 2, y + height / 2]);
    return Math.min(...places.flatMap(([x, y], i) => places.slice(0, i).map(([u, v]) => Math.hypot(x - u, y - v))));
}

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

async function openModel(name = 'sample.html', options = {}) {
    const page = await browser.open(name, options);
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
    await page.click('#details > button');
    assert.equal(await page.isVisible('#details'), false);
    assert.deepEqual(await chosenRows(page), []);
    assert.equal(await fillOf(page, spot(4)), before);
    await close(page);
});

test('An area and a balloon choose their row and bring it into view', async () => {
    const page = await browser.open('sample.html', {viewport: {width: 1300, height: 520}});
    assert.equal(await isRowInView(page, 34), false);
    await clickInside(page, spot(34));
    assert.deepEqual(await chosenRows(page), ['34']);
    assert.equal(await isRowInView(page, 34), true);
    await page.hover(`${balloon(21)} .label`);
    assert.equal(await page.locator(`${row(21)}.hovered`).count(), 1);
    await page.click(`${balloon(2)} .label`);
    assert.deepEqual(await chosenRows(page), ['2']);
    assert.equal(await isRowInView(page, 2), true);
    await page.fill('#query', 'bolt');
    await clickInside(page, spot(9));
    assert.equal(await isRowInView(page, 9), true, 'what was searched before hides it no longer');
    await clickInside(page, spot(4));
    assert.equal(await page.locator(`${spot(4)}.this-one`).count(), 1, 'one of ten');
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

// What is told about a row takes the room in which it stood.
test('A row that is chosen in a narrow window stays in view', async () => {
    const page = await browser.open('sample.html', {viewport: {width: 390, height: 667}});
    for (const item of [3, 20, 34]) {
        await page.click(row(item));
        assert.equal(await isRowInView(page, item), true, `row ${item}`);
    }
    const isCut = await page.locator('#list, .search, .details').evaluateAll(all => all.some(each => each.scrollWidth > each.clientWidth));
    assert.equal(isCut, false);
    await close(page);
});

test('The paper follows the mouse, and the wheel enlarges what is under it', async () => {
    const page = await browser.open('sample.html');
    const placeAt = (x, y) => page.locator('#drawing > svg').evaluate((svg, [u, v]) => {
        const place = new DOMPoint(u, v).matrixTransform(svg.getScreenCTM().inverse());
        return {x: Math.round(place.x), y: Math.round(place.y), scale: svg.getScreenCTM().a};
    }, [x, y]);
    const before = await placeAt(300, 300);
    await page.mouse.move(300, 300);
    await page.mouse.down();
    await page.mouse.move(360, 280, {steps: 3});
    await page.mouse.up();
    assert.deepEqual(await placeAt(360, 280), before);
    assert.deepEqual(await chosenRows(page), [], 'that was no click');
    await page.mouse.wheel(0, -400);
    await page.waitForFunction(scale => document.querySelector('#drawing > svg').getScreenCTM().a > 1.5 * scale, before.scale);
    const {x, y} = await placeAt(360, 280);
    assert.ok(Math.abs(x - before.x) < 2 && Math.abs(y - before.y) < 2);
    await page.click('[data-zoom=fit]');
    assert.deepEqual(await placeAt(300, 300), before);
    await close(page);
});

test('Two fingers enlarge the drawing about what lies between them, and do not choose', async () => {
    const page = await browser.open('sample.html');
    const boxes = await page.locator('#drawing > svg').evaluate(svg => {
        const send = (type, pointerId, clientX) => document.elementFromPoint(clientX, 300).dispatchEvent(
            new PointerEvent(type, {pointerId, clientX, clientY: 300, buttons: 1, bubbles: true}));
        const placeAt = () => new DOMPoint(350, 300).matrixTransform(svg.getScreenCTM().inverse());
        const [width, place] = [svg.viewBox.baseVal.width, placeAt()];
        send('pointerdown', 1, 300);
        send('pointerdown', 2, 400);
        send('pointermove', 1, 250);
        send('pointermove', 2, 450);
        send('pointerup', 1, 250);
        send('pointerup', 2, 450);
        send('click', 2, 450);
        return {factor: width / svg.viewBox.baseVal.width, moved: Math.hypot(placeAt().x - place.x, placeAt().y - place.y)};
    });
    assert.ok(Math.abs(boxes.factor - 2) < 0.01 && boxes.moved < 40, JSON.stringify(boxes));
    assert.deepEqual(await chosenRows(page), []);
    await close(page);
});

// What a glass shows is drawn over its rim and cut there.
test('The whole drawing is as large as what is seen of it, with its glasses', async () => {
    browser.run(`import ${browser.in('sample.glb')}`, 'resize 1000,700', 'create Breather \'Sight Glass\'',
        'inset add of 356,482 at 120,120 radius=80 factor=12', `export ${browser.in('glass.html')}`);
    const page = await browser.open('glass.html');
    const {left, rim} = await page.locator('#drawing > svg').evaluate(svg => ({
        left: svg.viewBox.baseVal.x,
        rim: Math.min(...[...svg.querySelectorAll('.inset > circle')].map(each => each.getBBox().x)),
    }));
    assert.ok(Math.abs(rim - left - 12) < 0.5, `the rim is at ${rim}, the picture begins at ${left}`);
    const areasAt = await page.evaluate(() => {
        const glass = document.querySelector('.inset clipPath circle');
        const toScreen = glass.ownerSVGElement.getScreenCTM();
        const [x, y, r] = ['cx', 'cy', 'r'].map(each => Number(glass.getAttribute(each)));
        return [0, 0.9].map(share => {
            const at = new DOMPoint(x + share * r, y + share * r).matrixTransform(toScreen);
            return document.elementFromPoint(at.x, at.y).closest('.inset')?.id ?? 'beside';
        });
    });
    assert.deepEqual(areasAt, ['inset-1', 'beside'], 'the corner of a glass belongs to what lies beside it');
    await close(page);
});

test('The page speaks the language of the sheet, with the headings of all lists', async () => {
    browser.write('one.gltf', modelOf(['Winkel']));
    for (const language of ['en', 'de', 'fr', 'es', 'ja']) {
        browser.make('one.gltf', ['one.html', 'one.svg'], '--language', language);
        const page = await browser.open('one.html');
        const headings = await page.locator('th button').allTextContents();
        const ofSheet = [...browser.read('one.svg').matchAll(/<text[^>]*font-weight="bold"[^>]*>([^<]*)</g)].map(each => each[1]);
        assert.deepEqual(headings, ofSheet.slice(-3), language);
        const words = await page.evaluate(() => JSON.parse(document.getElementById('data').textContent).words);
        assert.deepEqual(Object.keys(words).filter(each => words[each] === ''), [], language);
        if (language === 'de') {
            assert.equal(await page.textContent('#summary'), '1 Position, 1 Teil', 'it knows one from many');
            assert.equal(await page.getAttribute('#query', 'placeholder'), 'Teile suchen');
            assert.equal(await page.getAttribute('[data-zoom=in]', 'aria-label'), 'Vergrößern');
        }
        await close(page);
    }
});

test('Of a long list only the rows in sight are laid out', async () => {
    browser.write('rows.gltf', modelOf(Array.from({length: 200}, (_, i) => `Part ${i + 1}`)));
    browser.make('rows.gltf', ['rows.html'], '--select', 'Part 1');
    const page = await browser.open('rows.html');
    const isLaidOut = which => page.locator(`tbody tr:${which} td.name`).evaluate(
        cell => cell.checkVisibility({contentVisibilityAuto: true}));
    assert.deepEqual([await isLaidOut('first-child'), await isLaidOut('last-child')], [true, false]);
    await page.focus(row(1));
    await page.keyboard.press('End');
    await page.waitForFunction(() => document.querySelector('tbody tr:last-child td').checkVisibility({contentVisibilityAuto: true}));
    assert.deepEqual(await chosenRows(page), ['200']);
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
    await page.click(row(3));
    await page.keyboard.press('/');
    await page.keyboard.type('cover');
    await page.keyboard.press('Escape');
    assert.equal(await page.locator('tbody tr').count(), 34);
    assert.deepEqual(await chosenRows(page), ['3'], 'the first Escape ends the search only');
    await page.keyboard.type('hex');
    await page.keyboard.press('ArrowDown');
    assert.deepEqual(await chosenRows(page), ['4']);
    await page.keyboard.press('ArrowDown');
    assert.deepEqual(await chosenRows(page), ['10']);
    const outline = await page.locator(row(10)).evaluate(each => getComputedStyle(each).outlineStyle);
    assert.equal(outline, 'solid');
    assert.deepEqual(await page.locator('tr[tabindex="0"]').evaluateAll(rows => rows.map(each => each.dataset.item)), ['10']);
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

test('Parts of very large models can be clicked', async () => {
    browser.write('large.gltf', modelOf(['one', 'two']));
    browser.make('large.gltf', ['large.html']);
    browser.write('large.html', withTinyParts(browser.read('large.html'), 66000));
    const page = await openModel('large.html');
    await page.click('[data-act=callouts]');
    await page.click(row(2));
    const {x, y} = await pixelsOf(page, '#model canvas', [230, 145, 30]);
    await page.keyboard.press('Escape');
    await page.mouse.click(x, y);
    assert.deepEqual(await chosenRows(page), ['2']);
    await close(page);
});

test('Balloons around the model keep apart, and where there is no room for all, the chosen one is there', async () => {
    browser.write('many.gltf', modelOf(Array.from({length: 120}, (_, i) => `Part ${i + 1}`)));
    browser.make('many.gltf', ['many.html']);
    const cases = [['sample.html', 1440, 900, true], ['sample.html', 1100, 640, true], ['many.html', 800, 800, false]];
    for (const [name, width, height, isRoomy] of cases) {
        const page = await openModel(name, {viewport: {width, height}});
        await page.click(row(isRoomy ? 30 : 113));
        await page.waitForSelector('#model .balloon.chosen:visible');
        assert.equal(await page.locator('#model .balloon:visible').count() === (isRoomy ? 34 : 120), isRoomy);
        await page.focus('#model canvas');
        for (let turn = 0; turn < 12; ++turn) {
            await page.keyboard.press('ArrowRight');
            const least = await page.evaluate(leastDistance, '#model .balloon:not([hidden])');
            assert.ok(least > (isRoomy ? 29 : 21), `${name}, turn ${turn}: ${least} pixels between two balloons`);
        }
        await close(page);
    }
});

test('A part alone fills the view with its callout, and Escape brings the others back', async () => {
    const page = await openModel();
    const shown = () => page.locator('#model .balloon:visible').evaluateAll(all => all.map(each => each.dataset.item));
    const all = await shown();
    await page.click(row(9));
    await page.click('[data-act=isolate]');
    await page.waitForFunction(() => document.querySelectorAll('#model .balloon:not([hidden])').length === 1);
    assert.deepEqual(await shown(), ['9']);
    await page.mouse.move(5, 5);
    const {count} = await pixelsOf(page, '#model canvas', [192, 182, 166]);
    assert.ok(count > 4000, `a small part is shown large: ${count} pixels of it`);
    await page.click(row(1));
    await page.waitForFunction(() => document.querySelector('#model .balloon:not([hidden])').dataset.item === '1');
    await page.keyboard.press('Escape');
    await page.waitForFunction(() => document.querySelectorAll('#model .balloon:not([hidden])').length > 1);
    assert.deepEqual(await shown(), all);
    assert.deepEqual(await chosenRows(page), ['1']);
    await page.click('[data-act=isolate]');
    await page.waitForFunction(() => document.querySelectorAll('#model .balloon:not([hidden])').length === 1);
    await page.click('#model canvas', {position: {x: 4, y: 4}});
    await page.waitForFunction(() => document.querySelectorAll('#model .balloon:not([hidden])').length > 1);
    assert.deepEqual(await chosenRows(page), [], 'a click beside it ends both');
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
        'line\u2028and paragraph\u2029', '__proto__', '\'"`);alert(4)//', 'גלגל M2.5 (b)',
    ];
    browser.write('hostile.gltf', modelOf(names));
    browser.make('hostile.gltf', ['hostile.html']);
    const page = await browser.open('hostile.html');
    const shown = await page.locator('tbody td.name').evaluateAll(cells => cells.map(cell => cell.textContent));
    for (const name of names.filter(each => !each.startsWith('bell'))) assert.ok(shown.includes(name), name);
    assert.equal(await page.locator('img, b, script:not(#data) + script + *').count(), 0);
    for (let item = 1; item <= names.length; ++item) {
        await page.click(row(item));
        assert.equal(await page.textContent('#details bdi'), shown[item - 1]);
    }
    const directions = await page.locator('td.name, #details bdi').evaluateAll(
        all => all.filter(each => each.textContent.startsWith('גלגל')).map(each => getComputedStyle(each).direction));
    assert.deepEqual(directions, ['rtl', 'rtl'], 'names are read in their own direction');
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
    assert.ok(light(text) - light(await fillOf(page, `${balloon(1)} .label > circle`)) > 400);
    await page.click(row(1));
    const chosen = await page.locator(`${balloon(1)} text`).evaluate(each => getComputedStyle(each).fill);
    assert.ok(light(await fillOf(page, `${balloon(1)} .label > circle`)) - light(chosen) > 300);
    await page.click('#theme');
    assert.ok(await contrast(page) < -400);
    await close(page);
    browser.make('sample.glb', ['shaded.html'], '--style', 'both');
    const shaded = await browser.open('shaded.html', {colorScheme: 'dark'});
    const ground = await shaded.locator('#drawing > svg').evaluate(each => getComputedStyle(each).backgroundColor);
    assert.equal(ground, 'rgb(255, 255, 255)', 'a picture with shades has its own paper');
    await close(shaded);
});

test('Print has the drawing and all rows on light paper, and nothing to press', async () => {
    const page = await browser.open('sample.html', {colorScheme: 'dark'});
    await page.click(row(1));
    for (let i = 0; i < 4; ++i) await page.click('[data-zoom=in]');
    await page.emulateMedia({media: 'print'});
    assert.equal(await fillOf(page, spot(1)), 'rgb(255, 255, 255)');
    assert.equal(await page.locator('.tools:visible, input:visible, #theme:visible').count(), 0);
    await page.emulateMedia({media: null});
    const pages = await printed(page, browser.in('upright.pdf'));
    assert.equal(pages.length, 2);
    const rows = pages.join('').match(/^ *\d+ +\d+ +[A-Z]/gm);
    assert.equal(rows.length, 34);
    assert.ok(pages[0].match(/\b\d+\b/g).length >= 34, 'all balloons, however much was enlarged on the screen');
    await close(page);
});

test('The drawing fills a printed page, lying or upright, and each page of the list has its heading', async () => {
    browser.write('long.gltf', modelOf(Array.from({length: 90}, (_, i) => `Part ${i + 1}`)));
    browser.make('long.gltf', ['long.html']);
    const list = await browser.open('long.html');
    const pages = await printed(list, browser.in('long.pdf'), {landscape: true});
    assert.ok(pages.length > 3);
    for (const each of pages.filter(text => /Part \d/.test(text))) assert.match(each, /Item +Qty +Name/);
    await close(list);
    for (const [width, height] of [[703, 1032], [1032, 703]]) {  // A4 without margins
        const page = await browser.open('sample.html', {viewport: {width, height}});
        await page.emulateMedia({media: 'print'});
        const box = await page.locator('#drawing > svg').boundingBox();
        assert.ok(box.y + box.height <= height && box.height > 0.88 * height, `${box.height} of ${height}`);
        await close(page);
    }
});

test('The SVG alone follows a stylesheet of its page, and its areas can be clicked', async () => {
    const page = await browser.open('sample.svg', {viewport: {width: 1700, height: 1100}});
    await page.evaluate(() => {
        const style = document.createElementNS('http://www.w3.org/2000/svg', 'style');
        style.textContent = '.hotspot{fill:rgb(1, 2, 3)} .outline,.edge{stroke:rgb(255, 0, 0);stroke-width:7px}' +
            '.callout circle{fill:rgb(4, 5, 6)}';
        document.documentElement.append(style);
        document.addEventListener('click', event => { window.clicked = event.target.dataset.item; });
    });
    assert.equal(await fillOf(page, spot(1)), 'rgb(1, 2, 3)');
    assert.equal(await fillOf(page, '.callout circle'), 'rgb(4, 5, 6)');
    const widths = await page.locator('.outline, .edge').evaluateAll(all => all.map(each => getComputedStyle(each).strokeWidth));
    assert.deepEqual([...new Set(widths)], ['7px']);
    assert.ok((await pixelsOf(page, 'svg', [255, 0, 0])).count > 5000);
    await clickInside(page, spot(7));
    assert.equal(await page.evaluate(() => window.clicked), '7');
    await close(page);
});
