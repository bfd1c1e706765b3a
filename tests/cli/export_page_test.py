#!/usr/bin/env python3
"""Exported pages in a real browser: export_page_test.py QVX GUIDE [PICTURES]

With a folder for pictures, the guide's page is left there as it looks in light, dark, narrow and
printed."""

import os
import subprocess
import sys
import tempfile

from browser import Browser

WEB = """<cname>home</cname><text>See alpha and Beta_two.
nothing</text><cname>alpha</cname><text>to Beta_two, and alpha itself</text>
<cname>Beta two</cname><text></text><cname>gamma</cname><text>the needle</text></eof>"""

ATTACK = "<script>document.title='owned';alert(1)</script>"
NAMES = [b"a!", b"a?", b"a-", b"a\"b", b"a'b", b"a&amp;b", b"a%41", b"a#b", b"a\xff", b"a\xfe",
         b"a\xc3\xa9", b"x-", b"constructor", b"all", b"list", b"A ~21",
         b"x" + ATTACK.encode(), b"x\" onclick=\"alert(1)", b"x\nline", b"x\x1b[2J", b"x&lt;"]
TEXT = (ATTACK + "</div></main><img src=x onerror=alert(1)> \"'&amp; & --> ]]> <!-- {{x}} "
        "javascript:alert(1) home").encode() + b" \xff\xed\xa0\x80 \x01\x7f \xc2\x9b"
SHOWN = "article:is(:target, #home)"
VISIBLE = ("[...document.querySelectorAll('article')].filter(a => a.offsetParent !== null)"
           ".map(a => a.id).join()")
LISTED = ("[...document.querySelectorAll('nav li')].filter(i => i.offsetParent !== null)"
          ".map(i => i.textContent).join()")


def escaped(data):
    return data.replace(b"&", b"&amp;").replace(b"<", b"&lt;")


def hostile_web():
    cells = b"".join(b"<cname>%s</cname><text>%s</text>" % (escaped(name), escaped(TEXT))
                     for name in NAMES)
    return cells + b"</eof>"


def shown(data):
    """Bytes as the page shows them: control characters as pictures, what is no text as U+FFFD."""
    text = data.replace(b"\n", b"\r\n").decode("utf-8", "replace").replace("\r\n", "\n")
    pictures = {code: 0x2400 + code for code in range(32) if code != 10}
    return text.translate({**pictures, 0x7F: 0x2421, 0x9B: 0xFFFD})


class Pages:
    def __init__(self, qvx, folder, browser):
        self.qvx, self.folder, self.browser = qvx, folder, browser

    def export(self, web, name):
        path = os.path.join(self.folder, name)
        subprocess.run([self.qvx, "export", "-", "--html", path], input=web, check=True)
        return path


def follows_and_goes_back(pages):
    browser = pages.browser
    browser.open(pages.export(WEB.encode(), "w.html"))
    browser.wait(f"{VISIBLE} === 'home' && document.title === 'Notes'")
    browser.click("#home .text a")
    browser.wait(f"{VISIBLE} === 'alpha' && document.title === 'alpha - Notes'")
    browser.wait("document.querySelector('[aria-current]').textContent === 'alpha'")
    browser.click("#alpha .text a")
    browser.wait(f"{VISIBLE} === 'beta_two'")
    browser.back_or_forward(-1)
    browser.wait(f"{VISIBLE} === 'alpha'")
    browser.back_or_forward(-1)
    browser.wait(f"{VISIBLE} === 'home' && document.title === 'Notes'")
    browser.back_or_forward(1)
    browser.wait(f"{VISIBLE} === 'alpha'")
    backlinks = "[...document.querySelectorAll('#%s footer a')].map(a => a.hash).join()"
    assert browser.js(backlinks % "alpha") == "#home"
    assert browser.js(backlinks % "beta_two") == "#alpha,#home"
    assert browser.js(backlinks % "gamma") == ""
    browser.click("nav p a")
    browser.wait(f"{VISIBLE} === 'home,alpha,beta_two,gamma'")
    browser.open(os.path.join(pages.folder, "w.html"), "#alpha")
    browser.wait(f"{VISIBLE} === 'alpha' && document.title === 'alpha - Notes' && scrollY === 0 &&"
                 "document.querySelector('[aria-current]').textContent === 'alpha'")
    browser.open(os.path.join(pages.folder, "w.html"), "#gone")
    browser.wait(f"{VISIBLE} === 'home'")


def filters_by_keys(pages):
    browser = pages.browser
    browser.open(os.path.join(pages.folder, "w.html"))
    browser.key("/", "/")
    browser.wait("document.activeElement.id === '-filter'")
    browser.type("BETA_T")
    browser.wait(f"{LISTED} === 'alpha,Beta two,home'")  # two hold it in their texts
    browser.wait("document.querySelectorAll('li.inside:not([hidden])').length === 2")
    browser.key("Enter", "\r", 13)
    browser.wait(f"{VISIBLE} === 'beta_two'")
    browser.key("/", "/")
    browser.key("Escape", code=27)
    browser.wait(f"{LISTED} === 'alpha,Beta two,gamma,home'")
    browser.type("needle")
    browser.wait(f"{LISTED} === 'gamma'")
    browser.key("ArrowDown", code=40)
    browser.wait("document.activeElement.textContent === 'gamma'")
    browser.key("Enter", "\r", 13)
    browser.wait(f"{VISIBLE} === 'gamma'")
    browser.key("/", "/")
    browser.type("zz")
    browser.wait(f"{LISTED} === '' && document.getElementById('-nothing').offsetParent !== null")
    browser.key("ArrowDown", code=40)
    browser.key("Enter", "\r", 13)
    browser.wait(f"{VISIBLE} === 'gamma'")


def holds_whatever_is_in_it(pages):
    browser = pages.browser
    path = pages.export(hostile_web(), "<b>&\".html")
    for disabled in (False, True):
        browser.call("Emulation.setScriptExecutionDisabled", value=disabled)
        browser.open(path)
        ids = browser.js("[...document.querySelectorAll('[id]')].map(e => e.id)")
        assert len(set(ids)) == len(ids) > len(NAMES), ids
        names = browser.js("[...document.querySelectorAll('article h2')].map(e => e.textContent)")
        assert sorted(names) == sorted(["home"] + [shown(name) for name in NAMES]), names
        texts = browser.js("[...document.querySelectorAll('article .text')].map(e => e.textContent)")
        assert set(texts) == {"", shown(TEXT)}, texts
        assert browser.js("document.querySelectorAll('script').length") == 1
        assert browser.js("document.querySelectorAll('img, .text > :not(a)').length") == 0
        assert browser.js("document.querySelectorAll('[onclick]').length") == 0
        for link in range(1, len(names) + 1):
            browser.click(f"nav li:nth-child({link}) a")
            browser.wait(f"document.querySelector('{SHOWN}') !== null && "
                         f"document.querySelector('nav li:nth-child({link})').textContent === "
                         "document.querySelector('article:target h2').textContent")
    browser.call("Emulation.setScriptExecutionDisabled", value=False)


def is_read_without_scripts(pages):
    browser = pages.browser
    browser.call("Emulation.setScriptExecutionDisabled", value=True)
    browser.open(os.path.join(pages.folder, "w.html"))
    browser.wait(f"{VISIBLE} === 'home'")
    assert browser.js("document.getElementById('-filter').offsetParent") is None
    browser.click("#home .text a")
    browser.wait(f"{VISIBLE} === 'alpha'")
    browser.back_or_forward(-1)
    browser.wait(f"{VISIBLE} === 'home'")
    browser.call("Emulation.setScriptExecutionDisabled", value=False)


def fits_what_it_is_shown_on(pages, guide):
    browser = pages.browser
    with open(guide, "rb") as file:
        path = pages.export(file.read(), "guide.html")
    wide = "document.documentElement.scrollWidth > innerWidth"
    browser.size(320, 560)
    browser.open(path)
    assert not browser.js(wide)
    browser.click(".menu")
    browser.wait(f"{LISTED}.includes('cellnames') && {VISIBLE} === ''")
    assert not browser.js(wide)
    browser.click("nav li a")
    browser.wait(f"{VISIBLE} === 'cell_list' && {LISTED} === ''")
    browser.size(1000, 700)
    for scheme, lightest in (("light", 256 * 3), ("dark", 150)):
        browser.media(scheme=scheme)
        paper = browser.js("getComputedStyle(document.body).backgroundColor.match(/\\d+/g)")
        ink = browser.js("getComputedStyle(document.body).color.match(/\\d+/g)")
        assert sum(map(int, paper)) < lightest
        assert abs(sum(map(int, paper)) - sum(map(int, ink))) > 400
    browser.media("print", "dark")
    browser.wait("document.querySelector('.side').offsetParent === null && "
                 "getComputedStyle(document.body).color === 'rgb(0, 0, 0)'")
    browser.media()


def take_pictures(pages, folder):
    browser = pages.browser
    path = os.path.join(pages.folder, "guide.html")
    for name, width, height, scheme, fragment in (
            ("light", 1000, 700, "light", ""), ("dark", 1000, 700, "dark", "#cellnames"),
            ("narrow", 400, 800, "light", "#cellnames"), ("narrow_list", 400, 800, "dark", "#-list"),
            ("all", 1000, 700, "light", "#-all")):
        browser.size(width, height)
        browser.media(scheme=scheme)
        browser.open(path, fragment)
        browser.picture(os.path.join(folder, name + ".png"))
    browser.media()
    browser.open(path, "#cellnames")
    browser.printed(os.path.join(folder, "printed.pdf"))


def main(qvx, guide, pictures=None):
    browser = Browser()
    try:
        with tempfile.TemporaryDirectory() as folder:
            pages = Pages(os.path.abspath(qvx), folder, browser)
            browser.size(1000, 700)
            follows_and_goes_back(pages)
            filters_by_keys(pages)
            is_read_without_scripts(pages)
            holds_whatever_is_in_it(pages)
            fits_what_it_is_shown_on(pages, guide)
            if pictures:
                take_pictures(pages, pictures)
        assert browser.complaints == [], browser.complaints
        others = [url for url in browser.requests if not url.startswith(("file:///", "about:"))]
        assert others == [] and len(browser.requests) > 5, others
    finally:
        browser.close()


main(*sys.argv[1:])
