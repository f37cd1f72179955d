// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// sharp.js sharp|trellis TASK QUALITY BOUND IN OUT: what peer.sh wants of sharp, two pictures at a time.
const fs = require('fs');
const path = require('path');
const sharp = require('sharp');

const [program, task, quality, bound, input, output] = process.argv.slice(2);
const options = {
    jpeg: { quality: Number(quality), progressive: true, mozjpeg: program === 'trellis' },
    png: {},
    webp: { quality: Number(quality) },
};
const format = task === 'thumbnails' ? 'webp' : task;
const files = fs.readdirSync(input);

async function work() {
    for (let file = files.pop(); file; file = files.pop()) {
        let picture = sharp(path.join(input, file)).autoOrient();
        if (bound > 0) picture = picture.resize({ width: Number(bound), withoutEnlargement: true });
        await picture.toFormat(format, options[format]).toFile(path.join(output, `${file}.${format}`));
    }
}

Promise.all([work(), work()]).catch((error) => {
    console.error(error.message);
    process.exit(1);
});
