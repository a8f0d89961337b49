// Long lists: only the rows in view are elements. Rows have one height. A list that would be higher than browsers allow
// is scrolled through in proportion.

const MOST_HEIGHT = 8e6;
const AROUND = 12; // rows drawn above and below those in view

// draw (i) makes the element of a row.
function makeList(host, rowHeight, draw) {
  const spacer = host.appendChild(el("div", "spacer"));
  const drawn = new Map();
  let count = 0, top = 0, scale = 1, pending = false;

  const viewHeight = () => host.clientHeight || 600;

  function measure() {
    const whole = count * rowHeight, shown = Math.min(whole, MOST_HEIGHT);
    spacer.style.height = shown + "px";
    scale = shown < whole ? (whole - viewHeight()) / (shown - viewHeight()) : 1;
  }

  function refresh(anew) {
    if (anew) {
      drawn.forEach(row => row.remove());
      drawn.clear();
    }
    const first = Math.max(0, Math.floor(top / rowHeight) - AROUND);
    const last = Math.min(count - 1, Math.ceil((top + viewHeight()) / rowHeight) + AROUND);
    for (const [i, row] of drawn)
      if (i < first || i > last) {
        row.remove();
        drawn.delete(i);
      }
    const offset = scale === 1 ? 0 : host.scrollTop - top;
    for (let i = first; i <= last; i++) {
      let row = drawn.get(i);
      if (!row) {
        row = spacer.appendChild(draw(i));
        drawn.set(i, row);
      }
      row.style.top = i * rowHeight + offset + "px";
    }
  }

  function moveTo(wanted) {
    top = Math.max(0, Math.min(wanted, count * rowHeight - viewHeight()));
    host.scrollTop = top / scale;
    if (scale === 1) top = host.scrollTop;
    refresh();
  }

  host.addEventListener("scroll", () => {
    const there = host.scrollTop * scale;
    if (scale === 1 || Math.abs(there - top) > 1.5 * scale) top = there;
    if (pending) return;
    pending = true;
    requestAnimationFrame(() => {
      pending = false;
      refresh();
    });
  });
  host.addEventListener("wheel", event => {
    if (scale === 1 || event.ctrlKey || !event.deltaY) return;
    event.preventDefault();
    moveTo(top + event.deltaY * (event.deltaMode === 1 ? rowHeight : 1));
  }, { passive: false });
  new ResizeObserver(() => {
    measure();
    refresh();
  }).observe(host);

  return {
    rowHeight,
    // Rows that the view holds.
    page: () => Math.max(1, Math.floor(viewHeight() / rowHeight) - 1),
    setCount(newCount, width) {
      count = newCount;
      spacer.style.minWidth = width || "";
      measure();
      moveTo(top);
      refresh(true);
    },
    refresh: () => refresh(true),
    row: i => drawn.get(i),
    // Brings the row into view, and where it must move, a third down from the top.
    reveal(i) {
      const at = i * rowHeight;
      if (at < top || at + 2 * rowHeight > top + viewHeight())
        moveTo(at - viewHeight() / 3);
      else
        refresh();
    },
  };
}
