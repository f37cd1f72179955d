#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# includes.sh: holds the includes of the product to the layers. Each must
#   point downwards: records <- system <- types <- cwebp <- engine <- model <- ui <- app, cli on model, history on system and
#     below model; cwebp <- pixels <- metadata <- formats <- engine/local, on engine, and nothing on any of these;
#   start at an include root, with no ".." and no platform/ in it, and leave the private headers of other rooms alone;
#   name nothing of Qt in records, platform, engine and history;
#   close no circle, where a header and the source of its name count as one.
set -eu

cd -- "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")/../.."

find records platform engine history model ui app cli \( -name '*.h' -o -name '*.cpp' \) -print | LC_ALL=C sort | awk '
function fail(message) { print file ":" line ": " message > "/dev/stderr"; failed = 1 }

# The layer of a file, of which the platform has one a room and the engine two.
function layerOf(path,   parts) {
    split(path, parts, "/")
    return parts[1] == "platform" || parts[2] == "local" ? parts[2] : parts[1]
}

# A header and its source are one node, wherever in their layer they lie.
function nodeOf(path,   name) {
    name = path
    sub(/.*\//, "", name)
    sub(/\.[^.]*$/, "", name)
    return layerOf(path) "/" name
}

# The file that an include of this one means, as the compiler would find it.
function target(name,   folder, room) {
    folder = file
    sub(/[^\/]*$/, "", folder)
    if ((folder name) in files) return folder name
    if (("platform/" layerOf(file) "/" name) in files) return "platform/" layerOf(file) "/" name
    for (room in rooms) {
        if (("platform/" room "/include/" name) in files) return "platform/" room "/include/" name
        if (("platform/" room "/codec/" name) in files) return "platform/" room "/codec/" name
        if (("platform/" room "/" name) in files) return "platform/" room "/" name
    }
    return name in files ? name : ""
}

function mayInclude(from, to) { return index(" " below[from] " " from " ", " " to " ") > 0 }

function isPrivate(header) { return header ~ /^platform\// && header !~ /^platform\/[^\/]*\/(include|codec)\// }

# An include that is wrong by itself closes no circle besides.
function checkPlace(name, header,   from, to) {
    from = layerOf(file)
    to = layerOf(header)
    if (!mayInclude(from, to)) fail(from " must not include " to ": " name)
    else if (from != to && isPrivate(header)) fail("private to " to ": " name)
    else if (nodeOf(header) != nodeOf(file)) {
        edges[nodeOf(file), nodeOf(header)] = 1
        nodes[nodeOf(file)] = nodes[nodeOf(header)] = 1
    }
}

function checkOurs(name,   header) {
    header = target(name)
    if (name ~ /(^|\/)\.\.?\//) fail("steps through folders: " name)
    else if (name ~ /^platform\//) fail("goes around the include root: " name)
    else if (header == "") fail("no such header: " name)
    else checkPlace(name, header)
}

function check(   text, parts) {
    line = 0
    while ((getline text < file) > 0) {
        ++line
        if (text !~ /^[ \t]*#[ \t]*include[ \t]*["<]/) continue
        split(text, parts, /["<>]/)
        if (text ~ /"/ || target(parts[2]) != "") checkOurs(parts[2])
        else if (parts[2] ~ /^Q/ && !(layerOf(file) in withQt)) fail(layerOf(file) " knows no Qt: " parts[2])
    }
    close(file)
}

# Takes away what includes nothing that is left, and what nothing left includes, until only circles remain.
function checkCircles(   pair, ends, outgoing, incoming, node, changed, list) {
    do {
        changed = 0
        for (node in nodes) outgoing[node] = incoming[node] = 0
        for (pair in edges) {
            split(pair, ends, SUBSEP)
            if (!(ends[1] in nodes) || !(ends[2] in nodes)) { delete edges[pair]; continue }
            ++outgoing[ends[1]]
            ++incoming[ends[2]]
        }
        for (node in nodes)
            if (!outgoing[node] || !incoming[node]) { delete nodes[node]; changed = 1 }
    } while (changed)
    for (pair in edges) {
        split(pair, ends, SUBSEP)
        print "part of a circle of includes: " ends[1] " includes " ends[2] > "/dev/stderr"
        failed = 1
    }
}

# Each of the layers upon those before it and upon the lower ones.
function stack(names, lower,   order, count, i) {
    count = split(names, order, " ")
    for (i = 1; i <= count; ++i) {
        below[order[i]] = lower
        lower = lower " " order[i]
    }
}

BEGIN {
    stack("records system types cwebp engine model ui app", "")
    stack("pixels metadata formats local", "records system types cwebp")
    below["local"] = below["local"] " engine"
    below["cli"] = below["model"] " model"
    below["history"] = "records system"
    for (layer in below) if (layer ~ /^(model|ui|app|cli)$/) below[layer] = below[layer] " history"
    rooms["system"] = rooms["types"] = rooms["cwebp"] = rooms["pixels"] = rooms["metadata"] = rooms["formats"] = 1
    withQt["model"] = withQt["ui"] = withQt["app"] = withQt["cli"] = 1
}
{ files[$0] = 1 }
END {
    if (NR == 0) { print "no sources found" > "/dev/stderr"; exit 1 }
    for (file in files) check()
    checkCircles()
    exit failed
}'
