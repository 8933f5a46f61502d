// Bundles the page's script and styles and writes them down as a C++ source.
// Usage: node build.mjs PACKAGES OUT.cpp   PACKAGES: the folder that has node_modules

import {createHash} from 'node:crypto';
import {readFileSync, writeFileSync} from 'node:fs';
import {createRequire} from 'node:module';
import {dirname, join, resolve} from 'node:path';
import {fileURLToPath} from 'node:url';

const [packages, out] = process.argv.slice(2).map(path => resolve(path));
const here = dirname(fileURLToPath(import.meta.url));
const esbuild = createRequire(join(packages, 'package.json'))('esbuild');

async function bundle(file) {
    const result = await esbuild.build({
        entryPoints: [join(here, file)], bundle: true, minify: true, write: false, format: 'iife', charset: 'utf8',
        target: ['chrome110', 'firefox115', 'safari16'], legalComments: 'inline', nodePaths: [join(packages, 'node_modules')],
        logLevel: 'error',
    });
    const text = result.outputFiles[0].text.trim();
    // Either would end the element that the text is put into.
    if (/<\/(script|style)|<!--/i.test(text)) throw new Error(`${file}: what it is bundled to cannot stand in a page`);
    return text;
}

/** Compilers limit the length of one literal; neighbours become one. */
function literal(text) {
    const lines = [];
    for (let at = 0; at < text.length; at += 4000) lines.push(`    R"~~~(${text.slice(at, at + 4000)})~~~"`);
    return lines.join('\n');
}

const script = await bundle('main.js');
const assets = {
    kCataloguePage: readFileSync(join(here, 'page.html'), 'utf8'),
    kCatalogueStyles: await bundle('styles.css'),
    kCatalogueScript: script,
    kCatalogueScriptHash: `sha256-${createHash('sha256').update(script).digest('base64')}`,
};
const definitions = Object.entries(assets).map(
    ([name, text]) => `const std::string_view ${name} =\n${literal(text)};\n`);
writeFileSync(out, `#include "app/catalogue/CatalogueAssets.h"\n\nnamespace zrsheet {\n\n${definitions.join('\n')}\n}  // namespace zrsheet\n`);
