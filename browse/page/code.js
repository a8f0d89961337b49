// Texts: the ASN.1 on the left, the C on the right. Names that lead somewhere are links.

const words = text => new Set(text.split(" "));
const KEYWORDS = {
  c: words("auto break case char const continue default do double else enum extern float for goto if int long register " +
    "return short signed sizeof static struct switch typedef union unsigned void volatile while"),
  asn: words("ABSENT ALL ANY APPLICATION AUTOMATIC BEGIN BIT BMPString BOOLEAN BY CHARACTER CHOICE CLASS COMPONENT " +
    "COMPONENTS CONSTRAINED CONTAINING DEFAULT DEFINED DEFINITIONS EMBEDDED ENCODED END ENUMERATED EXCEPT EXPLICIT " +
    "EXPORTS EXTENSIBILITY EXTERNAL FALSE FROM GeneralString GeneralizedTime GraphicString IA5String IDENTIFIER IMPLICIT " +
    "IMPLIED IMPORTS INCLUDES INSTANCE INTEGER INTERSECTION MACRO MAX MIN NULL NumericString OBJECT OCTET OF OPTIONAL " +
    "PATTERN PDV PRESENT PRIVATE PrintableString REAL SEQUENCE SET SIZE STRING SYNTAX T61String TAGS TeletexString TRUE " +
    "TYPE TYPE-IDENTIFIER UNION UNIQUE UNIVERSAL UTCTime UTF8String UniversalString VideotexString VisibleString WITH"),
};
const TOKENS = {
  c: /\/\*.*?(?:\*\/|$)|"(?:[^"\\]|\\.)*"?|'(?:[^'\\]|\\.)*'?|#\s*\w+|[A-Za-z_]\w*|\d[\w.]*|[^\w"'#/]+|./g,
  asn: /--.*?(?:--|$)|\/\*.*?(?:\*\/|$)|"[^"]*"?|'[^']*'[BH]?|[A-Za-z][A-Za-z0-9]*(?:-[A-Za-z0-9]+)*|\d[\d.]*|[^\w"'/-]+|./g,
};

function tokenClass(token, language) {
  if (/^(--|\/\*)/.test(token)) return "comment";
  if (/^["']/.test(token)) return "string";
  if (/^\d/.test(token)) return "number";
  return token[0] === "#" || KEYWORDS[language].has(token) ? "keyword" : "";
}

const MOST_CHARACTERS = 10000; // a line with more is shown as it is

const linkTo = (node, text) => {
  const link = el("a", "", text);
  link.href = hashOf(node);
  link.title = `${shortKind(node)} ${labelOf(node)}`.trim();
  link.dataset.node = node;
  return link;
};

// Appends a line's tokens to its row.
function appendTokens(row, line, inComment, language, module) {
  const end = inComment ? line.indexOf("*/") : -1;
  const rest = !inComment ? line : end < 0 ? "" : line.slice(end + 2);
  if (inComment) row.append(el("span", "comment", line.slice(0, line.length - rest.length)));
  for (const [token] of rest.matchAll(TOKENS[language])) {
    const style = tokenClass(token, language);
    const node = !style && /^[A-Za-z_]/.test(token) ? nodeOfName(token, language === "c", module) : -1;
    if (node >= 0) {
      const link = row.appendChild(linkTo(node, token));
      link.tabIndex = -1; // lines are gone through by the keyboard, links by the line
    } else {
      row.append(style ? el("span", style, token) : token);
    }
  }
}

// onLine (file, line) is called for a line that was chosen.
function makePane(host, title, fileLabel, language, onLine) {
  const pane = { host, file: -1, cursor: 0, from: 0, to: -1, language };
  const list = makeList(host, 18, drawLine);

  function drawLine(i) {
    const line = i + 1, text = textOf(pane.file);
    const row = el("div", "row");
    row.dataset.line = line;
    row.append(el("span", "no", line));
    const marked = marksOf(pane.file).at.get(line);
    row.classList.toggle("has", Boolean(marked));
    row.classList.toggle("marked", line >= pane.from && line <= pane.to);
    row.classList.toggle("cursor", line === pane.cursor);
    if (text.missing || text.lines[i].length > MOST_CHARACTERS) row.append(text.lines[i]);
    else appendTokens(row, text.lines[i], text.comments.has(i), language, marked ? moduleOf(marked[0]) : pane.module);
    for (const message of messagesAt.get(`${pane.file}:${line}`) || []) row.append(el("span", "note", "\u26a0 " + message.text));
    return row;
  }

  pane.show = (node, line) => {
    const place = placeOf(node);
    if (place.file < 0) return pane.clear(labelOf(node));
    const count = textOf(place.file).lines.length;
    const isNew = place.file !== pane.file;
    pane.file = place.file;
    pane.module = moduleOf(node);
    pane.cursor = Math.max(1, Math.min(line || place.line, count));
    [pane.from, pane.to] = extentOf(node);
    title.textContent = labelOf(node);
    fileLabel.textContent = `${fileName(place.file)}:${pane.cursor}`;
    fileLabel.title = files[place.file];
    if (isNew) list.setCount(count, `calc(${textOf(place.file).width + 10}ch + 16px)`);
    else list.refresh();
    // What ends at the line is shown from its begin, if that fits.
    if (pane.to === pane.cursor && pane.to - pane.from < list.page() - 4) list.reveal(pane.from - 1);
    list.reveal(pane.cursor - 1);
  };
  pane.clear = text => {
    Object.assign(pane, { file: -1, from: 0, to: -1, cursor: 0 });
    title.textContent = text;
    fileLabel.textContent = "";
    list.setCount(0);
  };

  host.addEventListener("click", event => {
    const row = event.target.closest(".row");
    if (!row || event.target.closest("a") || !getSelection().isCollapsed) return;
    onLine(pane.file, Number(row.dataset.line));
  });
  host.addEventListener("keydown", event => {
    if (pane.file < 0 || event.ctrlKey || event.altKey || event.metaKey) return;
    const count = textOf(pane.file).lines.length, page = list.page();
    const moves = { ArrowUp: -1, ArrowDown: 1, PageUp: -page, PageDown: page, Home: -count, End: count };
    if (event.key === "Enter") {
      onLine(pane.file, pane.cursor);
    } else if (event.key in moves) {
      pane.cursor = Math.max(1, Math.min(count, pane.cursor + moves[event.key]));
      fileLabel.textContent = `${fileName(pane.file)}:${pane.cursor}`;
      list.reveal(pane.cursor - 1);
      list.refresh();
    } else {
      return;
    }
    event.preventDefault();
  });
  return pane;
}
