// What is shown, and how one comes to it: the tree, links, lines, keys, the address.

let current = ROOT;
let currentItem = -1; // what the C stands at

const asnPane = makePane(byId("asn"), byId("asnTitle"), byId("asnFile"), "asn", openLine);
const cPane = makePane(byId("c"), byId("cTitle"), byId("cFile"), "c", openLine);

// --- the address: module/definition/kind:item, "." for the definition of what belongs to the module ---

function hashOf(node) {
  if (node === ROOT) return "#";
  const path = [names[moduleOf(node)]];
  const owner = ownerOf(node);
  if (owner !== moduleOf(node)) path.push(names[owner]);
  else if (node !== owner) path.push(".");
  if (node !== owner) path.push(kindOf(node) + ":" + names[node]);
  return "#" + path.map(encodeURIComponent).join("/");
}

function nodeOfHash(hash) {
  let path;
  try {
    path = hash.slice(1).split("/").map(decodeURIComponent);
  } catch {
    return ROOT;
  }
  const find = (above, fits) => {
    for (const child of childrenOf(above)) if (fits(child)) return child;
    return -1;
  };
  let node = find(ROOT, child => names[child] === path[0]);
  if (node < 0) return ROOT;
  if (path.length > 1 && path[1] !== ".") {
    const definition = find(node, child => isDefinition(child) && names[child] === path[1]);
    if (definition < 0) return node;
    node = definition;
  }
  const item = path.length > 2 ? find(node, child => isItem(child) && kindOf(child) + ":" + names[child] === path[2]) : -1;
  return item < 0 ? node : item;
}

// Shows the node. how.line: the line of its text to stand at; how.replace: no step back leads to where it came from.
function navigate(node, how = {}) {
  if (node !== current) {
    const url = hashOf(node);
    if (how.replace) history.replaceState(null, "", url);
    else history.pushState(null, "", url);
  }
  show(node, how.line);
}

addEventListener("popstate", () => show(nodeOfHash(location.hash)));

// --- what is shown of a node ---

function drawItems(owner) {
  const MOST = 300; // more than these are found in the tree
  const box = byId("items");
  box.replaceChildren();
  const groups = new Map();
  let count = 0;
  for (const item of itemsOf(owner)) {
    if (!groups.has(kindOf(item))) groups.set(kindOf(item), []);
    if (++count <= MOST) groups.get(kindOf(item)).push(item);
  }
  const rank = ([, items]) => items.length ? kindRank(items[0]) : KIND_ORDER.length;
  for (const [kind, items] of [...groups].sort((a, b) => rank(a) - rank(b))) {
    const line = box.appendChild(el("div"));
    line.append(el("span", "kind", kind));
    for (const item of items) {
      const link = line.appendChild(linkTo(item, labelOf(item)));
      link.className = "item";
      if (nodeFiles[item] >= 0) link.title = `${files[nodeFiles[item]]}:${nodeLines[item]}`;
    }
  }
  if (count > MOST) box.append(el("div", "kind", `${count - MOST} more in the tree`));
}

function drawNotes(owner) {
  byId("notes").replaceChildren(...(messagesOf.get(owner) || []).map(message =>
    el("p", "", `\u26a0 ${message.line > 1 ? message.line + ": " : ""}${message.text}`)));
}

// The item to begin with, of those of a definition.
function firstItem(owner) {
  let best = -1;
  for (const item of itemsOf(owner)) if (best < 0 || kindRank(item) < kindRank(best)) best = item;
  return best;
}

let drawnOwner = -1;
function show(node, line) {
  current = node;
  const owner = ownerOf(node);
  if (isItem(node)) currentItem = node;
  else if (currentItem < 0 || ownerOf(currentItem) !== owner) currentItem = firstItem(owner);
  if (owner !== drawnOwner) {
    drawItems(owner);
    drawNotes(owner);
    drawnOwner = owner;
  }
  asnPane.show(owner, isItem(node) ? 0 : line);
  if (currentItem >= 0) cPane.show(currentItem, isItem(node) ? line : 0);
  else cPane.clear(owner === ROOT ? "" : "Nothing of its own was generated");
  for (const link of byId("items").querySelectorAll("a"))
    link.classList.toggle("active", Number(link.dataset.node) === currentItem);
  if (resultHost.hidden) revealInTree(node);
  document.title = node === ROOT ? labelOf(ROOT) : `${labelOf(node)} - ${labelOf(ROOT)}`;
}

// The node that a line belongs to; of several that of what is shown, and if it is shown, the next one.
function openLine(file, line, how) {
  const nodes = file >= 0 ? nodesAt(file, line) : [];
  if (!nodes.length) return file < 0 ? navigate(ROOT, how) : undefined;
  const at = nodes.indexOf(current);
  const node = at >= 0 && line === placeOf(current).line ? nodes[(at + 1) % nodes.length]
    : nodes.find(one => one === current || ownerOf(one) === ownerOf(current)) || nodes[0];
  navigate(node, { ...how, line });
}

document.addEventListener("click", event => {
  const link = event.target.closest("a[data-node]");
  if (!link || event.ctrlKey || event.metaKey || event.shiftKey || event.button) return;
  event.preventDefault();
  navigate(Number(link.dataset.node));
});

// --- messages ---

let lastMessage = -1;
function nextMessage() {
  if (!messages.length) return;
  lastMessage = (lastMessage + 1) % messages.length;
  const { node, line } = messages[lastMessage];
  navigate(node, { line });
}

const messageButton = byId("messages");
messageButton.hidden = !messages.length;
messageButton.textContent = "\u26a0 " + messages.length;
messageButton.title = "All warnings (w: the next one)";
messageButton.addEventListener("click", () => {
  showResults(messages, `${messages.length} warnings; Esc: back to the tree`);
  resultHost.focus();
});

// --- colours, widths, keys ---

function showTheme() {
  byId("theme").textContent = { auto: "\u25d0 auto", light: "\u2600 light", dark: "\u263e dark" }[theme] || theme;
}
function switchTheme() {
  theme = themes[(themes.indexOf(theme) + 1) % themes.length];
  try { localStorage.setItem("velmo-browse.theme", theme); } catch { /* it lasts as long as the page, then */ }
  paint();
  showTheme();
}
byId("theme").addEventListener("click", switchTheme);
byId("help").addEventListener("click", () => byId("keys").showModal());

["--treeWidth", "--asnWidth"].forEach((property, i) => {
  const splitter = document.querySelectorAll(".splitter")[i], before = splitter.previousElementSibling;
  const setWidth = width => {
    const most = document.body.clientWidth * 0.8;
    document.querySelector("main").style.setProperty(property, Math.max(80, Math.min(width, most)) + "px");
  };
  splitter.addEventListener("pointerdown", event => {
    splitter.setPointerCapture(event.pointerId);
    event.preventDefault();
  });
  splitter.addEventListener("pointermove", event => {
    if (splitter.hasPointerCapture(event.pointerId)) setWidth(event.clientX - before.getBoundingClientRect().left);
  });
  splitter.addEventListener("keydown", event => {
    const step = { ArrowLeft: -20, ArrowRight: 20 }[event.key];
    if (step) setWidth(before.clientWidth + step);
  });
});

// The item before or behind, among those of the definition.
function stepItem(step) {
  const items = [...itemsOf(ownerOf(current))];
  const at = items.indexOf(currentItem);
  if (items.length) navigate(items[(at + step + items.length) % items.length], { replace: true });
}

const keys = {
  "/": () => searchField.select(),
  "[": () => stepItem(-1),
  "]": () => stepItem(1),
  1: () => (resultHost.hidden ? treeHost : resultHost).focus(),
  2: () => asnPane.host.focus(),
  3: () => cPane.host.focus(),
  w: nextMessage,
  t: switchTheme,
  "?": () => byId("keys").showModal(),
};
document.addEventListener("keydown", event => {
  if (event.ctrlKey || event.altKey || event.metaKey || event.target === searchField || byId("keys").open) return;
  if (!(event.key in keys)) return;
  event.preventDefault();
  keys[event.key]();
});

// --- begin ---

byId("title").textContent = labelOf(ROOT);
(() => {
  const count = fits => names.reduce((sum, _, node) => sum + (fits(node) ? 1 : 0), 0);
  byId("figures").textContent =
    `${modules.length} modules, ${count(isDefinition)} definitions, ${count(isItem)} items`;
})();
showTheme();
if (modules.length === 1) opened.add(modules[0]);
layOut();
show(nodeOfHash(location.hash));
treeHost.focus();
// What the first search and the first text need is made while nothing else is to be done.
const whenIdle = window.requestIdleCallback || (work => setTimeout(work, 200));
whenIdle(() => {
  if (!definitionNames) fillNames();
  whenIdle(fillSearched);
});
