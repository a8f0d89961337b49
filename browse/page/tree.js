// The tree of the project, and in its place what a search finds.

const treeHost = byId("tree"), resultHost = byId("results"), searchField = byId("search"), everywhere = byId("everywhere");
const opened = new Set([ROOT]);
let shown = []; // nodes whose rows are there
let results = []; // { node } or { file, line, text }
let activeResult = 0;

const treeList = makeList(treeHost, 22, drawNode);
const resultList = makeList(resultHost, 22, drawResult);

function badge(row, node) {
  if (messageCounts[node]) row.append(el("span", "badge", "\u26a0 " + messageCounts[node]));
}

function drawNode(i) {
  const node = shown[i], row = el("div", "row");
  row.id = "node" + node;
  row.dataset.node = node;
  row.setAttribute("role", "treeitem");
  row.setAttribute("aria-level", levels[node] + 1);
  row.setAttribute("aria-selected", node === current);
  row.classList.toggle("active", node === current);
  row.style.paddingLeft = 4 + 14 * levels[node] + "px";
  const isOpen = opened.has(node), has = ends[node] > node + 1;
  if (has) row.setAttribute("aria-expanded", isOpen);
  row.append(el("span", "twisty", has ? (isOpen ? "\u25be" : "\u25b8") : ""));
  row.append(el("span", isItem(node) ? "item" : "", labelOf(node)), el("span", "kind", shortKind(node)));
  badge(row, node);
  return row;
}

function layOut() {
  shown = [];
  for (let node = ROOT; node < names.length; node = opened.has(node) ? node + 1 : ends[node]) shown.push(node);
  treeList.setCount(shown.length);
}

function setOpen(node, open) {
  if (ends[node] === node + 1 || opened.has(node) === open) return;
  if (open) opened.add(node);
  else opened.delete(node);
  layOut();
}

// Shows the row of the node, opening what it is in.
function revealInTree(node) {
  let isNew = false;
  for (let above = parents[node]; above >= 0; above = parents[above])
    if (!opened.has(above)) {
      opened.add(above);
      isNew = true;
    }
  if (isNew || !shown.length) layOut();
  else treeList.refresh();
  treeList.reveal(shown.indexOf(node));
  treeHost.setAttribute("aria-activedescendant", "node" + node);
}

treeHost.addEventListener("click", event => {
  const row = event.target.closest(".row");
  if (!row) return;
  const node = Number(row.dataset.node);
  if (event.target.closest(".twisty") || node === current) setOpen(node, !opened.has(node));
  if (!event.target.closest(".twisty")) navigate(node);
});

treeHost.addEventListener("keydown", event => {
  if (event.ctrlKey || event.altKey || event.metaKey) return;
  const at = shown.indexOf(current), page = treeList.page();
  const moves = { ArrowUp: -1, ArrowDown: 1, PageUp: -page, PageDown: page, Home: -shown.length, End: shown.length };
  if (event.key in moves) {
    navigate(shown[Math.max(0, Math.min(shown.length - 1, at + moves[event.key]))], { replace: true });
  } else if (event.key === "ArrowRight") {
    if (opened.has(current) && ends[current] > current + 1) navigate(current + 1, { replace: true });
    else setOpen(current, true);
  } else if (event.key === "ArrowLeft") {
    if (opened.has(current) && ends[current] > current + 1) setOpen(current, false);
    else if (parents[current] >= 0) navigate(parents[current], { replace: true });
  } else if (event.key === "Enter" || event.key === " ") {
    setOpen(current, !opened.has(current));
  } else {
    return;
  }
  event.preventDefault();
});

// --- search ---

const plain = text => text.toLowerCase().replaceAll("_", "-");
let searched = null; // names as they are compared
const fillSearched = () => searched = searched || names.map((_, node) => plain(plainName(node)));

// Nodes whose names have the text: the name itself first, then begins, then the rest; definitions before items.
function findNames(text) {
  fillSearched();
  const wanted = plain(text.trim().replace(/(\(\)|\[\])$/, ""));
  const ranks = Array.from({ length: 6 }, () => []);
  for (let node = 1; node < names.length; node++) {
    const at = searched[node].indexOf(wanted);
    if (at >= 0)
      ranks[(at ? 4 : searched[node].length === wanted.length ? 0 : 2) + (isItem(node) ? 1 : 0)].push({ node });
  }
  return ranks.flat();
}

const MOST_LINES = 2000;
function findLines(text) {
  const found = [], wanted = text.trim().toLowerCase();
  for (let file = 0; file < files.length && found.length < MOST_LINES; file++) {
    if (textOf(file).missing) continue;
    textOf(file).lines.forEach((line, i) => {
      if (found.length < MOST_LINES && line.toLowerCase().includes(wanted))
        found.push({ file, line: i + 1, text: line.trim() });
    });
  }
  return found;
}

function drawResult(i) {
  const { node, file, line, text } = results[i], row = el("div", "row");
  row.id = "result" + i;
  row.dataset.result = i;
  row.setAttribute("role", "option");
  row.setAttribute("aria-selected", i === activeResult);
  row.classList.toggle("active", i === activeResult);
  row.style.paddingLeft = "10px";
  if (text !== undefined) {
    row.title = text;
    row.append(el("span", "item", text), el("span", "where", file >= 0 ? `${fileName(file)}:${line}` : ""));
  } else {
    const where = levels[node] > 2 ? ` of ${labelOf(parents[node])}` : levels[node] > 1 ? ` in ${labelOf(parents[node])}` : "";
    row.append(el("span", isItem(node) ? "item" : "", labelOf(node)),
      el("span", "kind", isModule(node) ? "module" : shortKind(node)), el("span", "where", where));
    badge(row, node);
  }
  return row;
}

function showResults(found, what) {
  results = found;
  activeResult = -1;
  treeHost.hidden = true;
  resultHost.hidden = false;
  resultList.setCount(0);
  resultList.setCount(found.length);
  byId("found").textContent = what;
}

function leaveResults() {
  searchField.value = "";
  resultHost.hidden = true;
  treeHost.hidden = false;
  byId("found").textContent = "";
  revealInTree(current);
}

function search() {
  const text = searchField.value;
  if (!text.trim()) return leaveResultsKeepingText(text);
  const found = everywhere.checked ? findLines(text) : findNames(text);
  const count = everywhere.checked && found.length === MOST_LINES ? `the first ${MOST_LINES}` : found.length;
  showResults(found, `${count} ${everywhere.checked ? "lines" : "names"} found`);
}

function leaveResultsKeepingText(text) {
  leaveResults();
  searchField.value = text;
}

function openResult(i, how) {
  if (!results.length) return;
  activeResult = Math.max(0, Math.min(results.length - 1, i));
  resultList.refresh();
  resultList.reveal(activeResult);
  resultHost.setAttribute("aria-activedescendant", "result" + activeResult);
  const { node, file, line } = results[activeResult];
  if (node !== undefined) navigate(node, { ...how, line });
  else openLine(file, line, how);
}

let typing = 0;
searchField.addEventListener("input", () => {
  clearTimeout(typing);
  if (everywhere.checked) typing = setTimeout(search, 150);
  else search();
});
everywhere.addEventListener("change", search);

function resultKeys(event) {
  const page = resultList.page();
  const moves = { ArrowUp: -1, ArrowDown: 1, PageUp: -page, PageDown: page };
  if (event.key === "Escape") {
    leaveResults();
    treeHost.focus();
  } else if (event.key === "Enter") {
    openResult(Math.max(0, activeResult), {});
  } else if (event.key in moves && !resultHost.hidden) {
    openResult(Math.max(0, activeResult + moves[event.key]), { replace: true });
  } else {
    return;
  }
  event.preventDefault();
}
searchField.addEventListener("keydown", resultKeys);
resultHost.addEventListener("keydown", resultKeys);
resultHost.addEventListener("click", event => {
  const row = event.target.closest(".row");
  if (row) openResult(Number(row.dataset.result), {});
});
