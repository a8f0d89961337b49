"use strict";
// The project: nodes are numbers, those of the lines in the browser tree. Their columns come from the page's first
// data element, texts each from an element of its own. All of them become text nodes only, never markup.

const el = (tag, className, text) => {
  const element = document.createElement(tag);
  if (className) element.className = className;
  if (text !== undefined) element.textContent = text;
  return element;
};
const add = (map, key, value) => {
  const known = map.get(key);
  if (known) known.push(value);
  else map.set(key, [value]);
};
const byId = id => document.getElementById(id);

// What the element holds; null if there is none. It goes, so that nothing is kept twice.
function takeData(id) {
  const element = byId(id);
  if (!element) return null;
  element.remove();
  return JSON.parse(element.textContent);
}

const project = takeData("project");
const { files, kinds, levels, nodeFiles, nodeLines, nodeKinds } = project;
const names = project.names.split("\n");
const ROOT = 0;

// For each node the one that it belongs to, and the first one behind all that belong to it.
const parents = new Int32Array(names.length);
const ends = new Int32Array(names.length);
(() => {
  const open = [];
  for (let node = 0; node <= names.length; node++) {
    while (open.length > (node < names.length ? levels[node] : 0)) ends[open.pop()] = node;
    if (node === names.length) break;
    parents[node] = open.length ? open[open.length - 1] : -1;
    open.push(node);
  }
})();

const isDefinitionKind = kinds.map(kind => kind.startsWith("ASN.1 "));
const kindOf = node => kinds[nodeKinds[node]];
const isModule = node => levels[node] === 1;
const isDefinition = node => levels[node] > 1 && isDefinitionKind[nodeKinds[node]];
const isItem = node => levels[node] > 1 && !isDefinitionKind[nodeKinds[node]];
const labelOf = node => names[node] || (levels[node] ? "(without names)" : "(project)");
const shortKind = node => levels[node] < 2 ? "" : kindOf(node).replace(/^ASN\.1 (object (?=class))?/, "");
const plainName = node => /[\])]$/.test(names[node]) ? names[node].replace(/(\(\)|\[\])$/, "") : names[node];
const fileName = file => files[file].replace(/^.*[/\\]/, "");

// The definition or module, or the project, that an item belongs to; itself for those.
function ownerOf(node) {
  while (isItem(node)) node = parents[node];
  return node;
}

function moduleOf(node) {
  while (levels[node] > 1) node = parents[node];
  return node;
}

function* childrenOf(node) {
  for (let child = node + 1; child < ends[node]; child = ends[child]) yield child;
}

function* itemsOf(owner) {
  for (const child of childrenOf(owner)) if (isItem(child)) yield child;
}

const modules = [...childrenOf(ROOT)];
const sourceFiles = new Set(modules.map(module => nodeFiles[module]));

// --- texts ---

const texts = [];

// Lines that begin inside a comment that began above.
function commentLines(whole) {
  const inside = new Set();
  for (let at = whole.indexOf("/*"), line = 0, seen = 0; at >= 0; at = whole.indexOf("/*", seen)) {
    const end = whole.indexOf("*/", at + 2);
    const stop = end < 0 ? whole.length : end;
    for (; seen < at; seen++) if (whole.charCodeAt(seen) === 10) line++;
    for (; seen < stop; seen++) if (whole.charCodeAt(seen) === 10) inside.add(++line);
  }
  return inside;
}

function textOf(file) {
  if (!texts[file]) {
    const whole = takeData("text" + file);
    const lines = whole === null ? ["This file could not be read: " + takeData("error" + file)] : whole.split("\n");
    if (lines.length > 1 && lines[lines.length - 1] === "") lines.pop();
    const width = lines.reduce((most, line) => Math.max(most, line.length), 0);
    texts[file] = { lines, width, missing: whole === null, comments: commentLines(whole || "") };
  }
  return texts[file];
}

// --- places ---

// Lines from 1, in which assignments and modules of a source begin, by their names.
function startsIn(file) {
  const { lines } = textOf(file);
  const starts = new Map();
  lines.forEach((line, i) => {
    const name = /^[ \t]*([A-Za-z][\w-]*)/.exec(line);
    if (!name) return;
    const begins = line.includes("::=") || /^\s*(\S+\s+)?(::=|DEFINITIONS\b)/.test(lines[i + 1] || "") ||
      /\bDEFINITIONS\b/.test(line) || /^\s*\{[^}]*\}?/.test(lines[i + 1] || "");
    if (!begins) return;
    add(starts, name[1], i + 1);
  });
  return starts;
}

// A definition that only refers to another one is listed where that one stands, and a module at the begin of its file;
// the text tells where they stand themselves.
const allStarts = new Map();
const definitionPlaces = new Map();
function placeOf(node) {
  if (levels[node] === 0 || isItem(node)) return { file: nodeFiles[node], line: nodeLines[node] };
  if (definitionPlaces.has(node)) return definitionPlaces.get(node);
  const module = moduleOf(node), file = nodeFiles[module];
  if (file >= 0 && !allStarts.has(file)) allStarts.set(file, startsIn(file));
  const lines = (file >= 0 && allStarts.get(file).get(names[node])) || [];
  let place = { file: nodeFiles[node], line: nodeLines[node] };
  if (lines.length && !(place.file === file && lines.includes(place.line))) {
    const begin = node === module ? 0 : placeOf(module).line;
    place = { file, line: lines.find(line => line > begin) || lines[0] };
  }
  definitionPlaces.set(node, place);
  return place;
}

// The lines of a file that nodes stand at, in order, and the nodes of each.
const allMarks = [];
function marksOf(file) {
  if (!allMarks[file]) {
    const at = new Map(), isSource = sourceFiles.has(file);
    for (let node = 1; node < names.length; node++) {
      let line = nodeLines[node];
      if (isItem(node)) {
        if (nodeFiles[node] !== file) continue;
      } else {
        if (!isSource || (nodeFiles[moduleOf(node)] !== file && nodeFiles[node] !== file)) continue;
        const place = placeOf(node);
        if (place.file !== file) continue;
        line = place.line;
      }
      add(at, line, node);
    }
    allMarks[file] = { at, lines: [...at.keys()].sort((a, b) => a - b) };
  }
  return allMarks[file];
}

// How many marked lines stand at or above the line.
function marksAbove(file, line) {
  const { lines } = marksOf(file);
  let low = 0, high = lines.length;
  while (low < high) {
    const middle = (low + high) >> 1;
    if (lines[middle] <= line) low = middle + 1;
    else high = middle;
  }
  return low;
}

// The nodes that a line belongs to. The line of a typedef is its last one, that of all else the first.
function nodesAt(file, line) {
  const { at, lines } = marksOf(file);
  const above = marksAbove(file, line);
  const before = lines[above - 1], behind = lines[above];
  if (before !== line && behind !== undefined && kindOf(at.get(behind)[0]) === "typedef") return at.get(behind);
  return before === undefined ? [] : at.get(before);
}

// The first and the last line of what stands at a place.
function extentOf(node) {
  const { file, line: told } = placeOf(node);
  const { lines } = textOf(file);
  const line = Math.max(1, Math.min(told, lines.length)); // the text may be shorter by now
  if (isModule(node)) return [line, line];
  const next = Math.min(marksOf(file).lines[marksAbove(file, line)] || Infinity, lines.length + 1);
  let first = line, last = line;
  if (isDefinition(node)) {
    last = next - 1;
    while (last > line && /^\s*(--.*|END\s*)?$/.test(lines[last - 1])) last--;
  } else if (kindOf(node) === "typedef") {
    while (first > 1 && !/^\s*typedef\b/.test(lines[first - 1]) && lines[first - 1] !== "") first--;
  } else if (kindOf(node) === "function" || kindOf(node) === "variable") {
    while (last < next - 1 && !/^\}|;\s*$/.test(lines[last - 1].startsWith(" ") ? "" : lines[last - 1])) last++;
  } else if (kindOf(node) === "table item") {
    while (last < next - 1 && !/^\s*\}?;?\s*$|^\};/.test(lines[last])) last++;
  } else {
    while (last < lines.length && lines[last - 1].endsWith("\\")) last++;
  }
  return [first, last];
}

// --- names that are links ---

// What a link leads to first, of items of one name.
const KIND_ORDER = ["typedef", "function", "variable", "macro", "define", "table item", "extern"];
const kindRank = node => (KIND_ORDER.indexOf(kindOf(node)) + KIND_ORDER.length + 1) % (KIND_ORDER.length + 1);

let definitionNames = null, itemNames = null;
function fillNames() {
  definitionNames = new Map();
  itemNames = new Map();
  for (let node = 1; node < names.length; node++) add(isItem(node) ? itemNames : definitionNames, plainName(node), node);
}

// The node that a name in a text leads to, seen from a module; -1 if none.
function nodeOfName(name, isC, module) {
  if (!definitionNames) fillNames();
  const found = (isC ? itemNames : definitionNames).get(name);
  if (!found) return -1;
  const near = found.filter(node => moduleOf(node) === module);
  const list = near.length ? near : found;
  return isC ? list.reduce((best, node) => kindRank(node) < kindRank(best) ? node : best) : list[0];
}

// --- messages of the summary ---

const messages = project.messages.map(([file, line, text, count]) =>
  ({ file, line, text: count > 1 ? `${text} (${count} times)` : text, node: ROOT }));
const messagesOf = new Map(); // by the node
const messagesAt = new Map(); // by file and line
const messageCounts = new Int32Array(names.length); // with those of what belongs to the node
for (const message of messages) {
  if (message.file >= 0) {
    const module = modules.find(node => nodeFiles[node] === message.file);
    const node = message.line > 1 ? nodesAt(message.file, message.line)[0] : module;
    message.node = ownerOf(node === undefined ? module === undefined ? ROOT : module : node);
  }
  add(messagesOf, message.node, message);
  if (message.file >= 0) add(messagesAt, `${message.file}:${message.line}`, message);
  for (let node = message.node; node >= 0; node = parents[node]) messageCounts[node]++;
}
