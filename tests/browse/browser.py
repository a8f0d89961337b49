"""Drives pages of velmo-browse in a headless Chromium, by the WebDriver protocol; see browser.sh."""

import base64
import json
import subprocess
import sys
import time
import urllib.error
import urllib.request

failures = 0


def same(what, expected, actual):
    global failures
    if expected != actual:
        failures += 1
        print(f"FAILED: {what}: expected {expected!r}, got {actual!r}")


class Browser:
    """A session. Keys go to what has the focus, clicks to the middle of an element, as a user's do."""

    def __init__(self, profile):
        self.driver = subprocess.Popen(["chromedriver", "--port=0"], stdout=subprocess.PIPE, text=True)
        for line in self.driver.stdout:
            if "started successfully on port" in line:
                self.base = "http://127.0.0.1:" + line.rstrip(".\n").rsplit(" ", 1)[1]
                break
        options = {"args": ["--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage", "--window-size=1280,800",
                            "--force-prefers-color-scheme=light", "--user-data-dir=" + profile]}
        wanted = {"goog:chromeOptions": options, "goog:loggingPrefs": {"browser": "ALL"}, "unhandledPromptBehavior": "ignore"}
        self.base += "/session/" + self.ask("/session", {"capabilities": {"alwaysMatch": wanted}})["sessionId"]

    def ask(self, path, body=None, method=None):
        data = None if body is None else json.dumps(body).encode()
        request = urllib.request.Request(self.base + path, data, method=method)
        try:
            with urllib.request.urlopen(request, timeout=120) as answer:
                return json.load(answer)["value"]
        except urllib.error.HTTPError as error:
            raise SystemExit(f"{path} {body}: {error.read().decode()[:500]}")

    def open(self, url):
        self.ask("/url", {"url": "about:blank"})
        self.ask("/url", {"url": url})

    def run(self, script):
        return self.ask("/execute/sync", {"script": "return " + script, "args": []})

    def press(self, keys):
        actions = [{"type": kind, "value": key} for key in keys for kind in ("keyDown", "keyUp")]
        self.ask("/actions", {"actions": [{"type": "key", "id": "keys", "actions": actions}]})

    def click(self, xpath):
        element = self.ask("/element", {"using": "xpath", "value": xpath})
        self.ask(f"/element/{next(iter(element.values()))}/click", {})

    def picture(self, file):
        with open(file, "wb") as out:
            out.write(base64.b64decode(self.ask("/screenshot")))

    def quit(self):
        self.ask("", method="DELETE")
        self.driver.terminate()
        self.driver.wait()


DOWN, LEFT, RIGHT, END, ENTER, ESCAPE = "\ue015", "\ue012", "\ue014", "\ue010", "\ue007", "\ue00c"


def has(name):
    return f"contains(concat(' ', @class, ' '), ' {name} ')"


def shown(browser):
    """Titles and the lines that stand out: of the ASN.1 text, and of the C."""
    return browser.run("""['asn', 'c'].map(id => [document.getElementById(id + 'File').textContent,
        (document.querySelector('#' + id + ' .cursor') || { textContent: '' }).textContent]).flat()""")


def in_tree(browser):
    return browser.run("(document.querySelector('#tree [aria-selected=true]') || { textContent: '' }).textContent")


def row(line, pane):
    return f"//*[@id='{pane}']//*[@data-line='{line}']"


ORDER = ["shop.asn:8", "8Order ::= [APPLICATION 1] SEQUENCE {"]


def try_ways(browser):
    """From the tree to both texts, from the ASN.1 to the C, and back."""
    browser.click("//*[@id='tree']//*[text()='Shop-Orders']")
    same("module", ["shop.asn:3", "3Shop-Orders DEFINITIONS IMPLICIT TAGS ::="], shown(browser)[:2])
    browser.click("//*[@id='tree']//*[text()='Shop-Orders']")
    browser.click("//*[@id='tree']//*[text()='Order']")
    same("definition", ORDER + ["shop.typ:39", "39} Order;"], shown(browser))
    browser.click("//*[@id='items']//a[text()='encOrder()']")
    same("item", ORDER, shown(browser)[:2])
    same("function", True, shown(browser)[3].endswith("void encOrder (ASNG_F(ASNCODG *asncodg) Order *home)"))
    same("item in the tree", True, in_tree(browser).startswith("encOrder()function"))
    browser.click(row(17, "asn") + "/*[" + has("no") + "]")
    same("line of ASN.1", ["shop.asn:17", "17Line ::= SEQUENCE {", "shop.typ:24", "24} Line;"], shown(browser))
    browser.click(row(18, "asn") + "//a[text()='Article']")
    same("name in ASN.1", "Article ::= SEQUENCE {", shown(browser)[1].lstrip("0123456789"))
    browser.run("history.back()")
    same("back", "17Line ::= SEQUENCE {", shown(browser)[1])
    browser.click(row(35, "c") + "/*[" + has("no") + "]")
    same("line of C", ORDER + ["shop.typ:35", "35    Line elem [20];"], shown(browser))
    browser.click(row(35, "c") + "//a[text()='Line']")
    same("name in C", "17Line ::= SEQUENCE {", shown(browser)[1])
    address = browser.run("location.href")
    browser.open(address)
    same("address", ["17Line ::= SEQUENCE {", "24} Line;"], shown(browser)[1::2])
    browser.run("navigate(nodeOfHash('#All-Forms/Alias'))")
    same("alias", True, shown(browser)[1].lstrip("0123456789").startswith("Alias ::="))


def try_keys(browser):
    browser.press("/")
    browser.press("SET-state")
    same("search", "set_state_Ordermacro of Order", browser.run("document.querySelector('#results .row').textContent"))
    same("found", "1 names found", browser.run("document.getElementById('found').textContent"))
    browser.press(ENTER)
    same("found item", ORDER, shown(browser)[:2])
    browser.press(ESCAPE)
    same("in the tree", True, in_tree(browser).startswith("set_state_Order"))
    browser.press([LEFT, LEFT, DOWN, RIGHT, RIGHT])
    same("arrows", "Placetypedef", in_tree(browser))
    browser.press("]")
    same("next item", "encPlace()extern", in_tree(browser))
    browser.press(["3", DOWN, END, ENTER])
    same("last line of C", browser.run("cPane.cursor"), browser.run("textOf(cPane.file).lines.length"))
    browser.run("navigate(nodeOfHash('#Shop-Orders/Order'))")
    browser.press(["2"] + [DOWN] * 9 + [ENTER])
    same("Enter in ASN.1", ["shop.asn:17", "24} Line;"], shown(browser)[0::3])
    before = browser.run("getComputedStyle(document.body).backgroundColor")
    browser.press("tt")
    same("dark", ["rgb(255, 255, 255)", "rgb(22, 24, 29)"],
         [before, browser.run("getComputedStyle(document.body).backgroundColor")])
    browser.press("t")
    browser.press("/")
    browser.click("//*[@id='everywhere']/..")
    browser.click("//*[@id='search']")
    browser.press("lines     sequence")
    time.sleep(0.5)
    browser.press(ENTER)
    same("in texts", ["shop.asn:12", "12  lines     SEQUENCE (SIZE (1..20)) OF Line,"], shown(browser)[:2])
    browser.press(ESCAPE)


def try_messages(browser):
    browser.press("w")
    same("of the project", "\u26a0 (W) Global option ignored: -WRONG=1 (6 times)",
         browser.run("document.getElementById('notes').textContent"))
    browser.press("w")
    same("of a line", "9  number    INTEGER (0..2147483647),\u26a0 (W) Option ignored : -WRONG=2", shown(browser)[1])
    same("in the tree", "\u25b8Ordertype\u26a0 1", in_tree(browser))
    browser.click("//*[@id='messages']")
    same("list", 2, browser.run("document.querySelectorAll('#results .row').length"))
    browser.press(ESCAPE)


def try_hostile(browser):
    same("title", ["<b>& ", "<b>& "], [browser.run("document.title + ' '"),
                                       browser.run("document.getElementById('title').textContent + ' '")])
    browser.run("navigate(nodeOfHash('#X/T'))")
    same("as text", "-- \"</script><script>alert(1)</script>\" <!-- <script>\u26a0 (W) A : <i> (2 times)",
         browser.run("document.querySelector('#asn [data-line=\"2\"]').textContent").split("BEGIN ")[-1])
    same("missing", "1This file could not be read: No such file or directory", shown(browser)[3])
    same("all of it", None, browser.run("void names.forEach((_, node) => { navigate(node); openLine(0, node); stepItem(1); })"))
    same("no markup", [0, 0, 0], browser.run("['b', 'i', 'main script'].map(tag => document.querySelectorAll(tag).length)"))


def try_large(browser):
    figures = browser.run("""(() => {
        const figures = { page: performance.getEntriesByType('navigation')[0].domComplete };
        const take = (name, work) => {
          const begin = performance.now();
          work();
          document.body.offsetHeight;
          figures[name] = performance.now() - begin;
        };
        take('definition', () => navigate(nodeOfHash('#Large/Type-5000')));
        take('function', () => navigate(nodeOfHash('#Large/Type-5000/function%3AdecType_5000()')));
        take('search', () => { searchField.value = 'type_99'; search(); });
        take('wide search', () => { searchField.value = 'e'; search(); });
        take('back', leaveResults);
        take('all open', () => { for (const one of childrenOf(1)) opened.add(one); layOut(); });
        take('end', () => { treeHost.focus(); treeHost.dispatchEvent(new KeyboardEvent('keydown', { key: 'End' })); });
        return figures;
    })()""")
    print("10,000 definitions, milliseconds:", ", ".join(f"{name} {value:.0f}" for name, value in figures.items()))
    same("nothing takes seconds", [], [name for name, value in figures.items() if value > 5000])
    same("rows in the tree", True, browser.run("shown.length") > 100000)
    same("elements are few", True, browser.run("document.querySelectorAll('*').length") < 1500)
    same("last row", True, "Type-9999" in browser.run("document.querySelector('#asn .cursor').textContent"))


def main(work, picture=None):
    browser = Browser(work + "/profile")
    try:
        for page, trial in (("shop/shop", try_ways), ("shop/shop", try_keys), ("shop/shop", try_messages),
                            ("hostile/p", try_hostile), ("large/large", try_large)):
            browser.open(f"file://{work}/{page}.html")
            trial(browser)
            same(f"{page}: complaints of the browser", [], browser.ask("/se/log", {"type": "browser"}))
        if picture:
            browser.open(f"file://{work}/shop/shop.html#Shop-Orders/Order/function%3AeOrder()")
            browser.picture(picture)
    finally:
        browser.quit()
    print("the pages work" if failures == 0 else f"{failures} failed")
    return 1 if failures else 0


sys.exit(main(*sys.argv[1:]))
