// Runs the browser tests. Usage: node run.mjs PACKAGES ZRSHEET ZR_SAMPLE   PACKAGES: the folder that has node_modules
// Exit code 77: there is no browser to test with.

import {spawnSync} from 'node:child_process';
import {dirname, join} from 'node:path';
import {fileURLToPath} from 'node:url';

const [packages, sheet, sample] = process.argv.slice(2);
if (spawnSync('chromium', ['--version']).status !== 0) {
    console.log('skipped: no chromium found; tools/install_packages.sh test installs it');
    process.exit(77);
}
const here = dirname(fileURLToPath(import.meta.url));
const environment = {...process.env, ZR_PACKAGES: packages, ZR_SHEET: sheet, ZR_SAMPLE: sample};
const run = spawnSync(process.execPath, ['--test', '--test-reporter=tap', join(here, 'catalogue.test.mjs')],
    {env: environment, stdio: 'inherit'});
process.exit(run.status ?? 1);
