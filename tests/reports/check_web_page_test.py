#!/usr/bin/env python3
"""The check must find a page that is broken: a sound one with one fault each."""
import base64
import sys
import unittest

sys.dont_write_bytecode = True
import check_web_page as check

PICTURE = b"\xff\xd8\xff\xd9"
PAGE = """<!DOCTYPE html>
<html lang="en"><head><meta charset="utf-8"><meta name="viewport" content="width=device-width"><title>Report</title>
<style>body{color:#1b1f23;background:#ffffff}a{color:#0b57a4}.alert{color:#ffffff;background:#a61b14}
img{max-width:100%%;height:auto}@media print{nav{display:none}li{break-inside:avoid}
img{max-height:11cm;object-fit:contain}}</style></head>
<body><header><p>Office</p><h1>Report</h1><dl><dt>Client</dt><dd>Mr Holm</dd></dl></header><nav><a href="#attention">Urgent</a> <a href="#cat1">Roof</a></nav>
<main>
<section id="attention"><h2>Urgent</h2><p>1 finding.</p><h3>Roof</h3><ul><li><a href="#cat1-1">1 Tiles</a>
<em class="alert">Bad</em><p>Two &lt;are&gt; gone.</p></li></ul></section>
<section id="cat1"><h2>Roof</h2><h3 id="cat1-1">1 Tiles <span class="alert">Bad</span></h3><p>Clay</p>
<p>Two &lt;are&gt; gone.</p><figure><img alt="1 Tiles, picture 1" width="6" src="data:image/jpeg;base64,%s"></figure>
<h3 id="cat1-2">2 Ridge</h3><p>Sound.</p></section></main><footer>Fine print</footer></body></html>
""" % base64.b64encode(PICTURE).decode()
CONTENT = {"categories": {"cat1": "Roof 1 Tiles Bad Clay Two <are> gone. 2 Ridge Sound."},
           "attention": "Roof 1 Tiles Bad Two <are> gone.", "pictures": [PICTURE], "told": [("1 Tiles, picture 1", "6")],
           "header": "Office Report Client Mr Holm", "footer": "Fine print", "general": None, "terms": None, "red": ["Bad"],
           "urgentRed": ["Bad"]}

BROKEN = [  # what changes, and into what; what must be told
    ("<!DOCTYPE html>", "", "no doctype"),
    (' lang="en"', "", "no language"),
    ('<meta charset="utf-8">', "", "no charset"),
    ("<title>Report</title>", "<title> </title>", "no title"),
    ("<h2>Urgent</h2>", "<h1>Urgent</h1>", "not one h1"),
    ("<h2>Urgent</h2>", "", "h3 after h1"),
    ("<h2>Urgent</h2>", "<h2> </h2>", "an empty <h2>"),
    ('id="cat1-2"', 'id="cat1-1"', "there twice"),
    ('href="#cat1-1"', 'href="#cat1-3"', "leads nowhere"),
    ('href="#cat1-1"', 'href="#cat1-2"', "leads to another heading"),
    ('href="#cat1-1"', 'href="toc.htm"', "refers to another file"),
    ("1 Tiles, picture 1", "x", "words and widths"),
    (' width="6"', "", "words and widths"),
    (' width="6"', ' width="7"', "words and widths"),
    ("base64,/9j/2Q==", "base64,/9j/2Q=", "not base64"),
    ("base64,/9j/2Q==", "base64,/9j/2A==", "not the pictures"),
    ("image/jpeg", "image/png", "said to be"),
    ("<p>Clay</p>", "<p>Clay</p><script>1</script>", "is a program"),
    ("<p>Clay</p>", '<p onclick="1">Clay</p>', "is a program"),
    ("#0b57a4", "#8b97a4", "a: #8b97a4 on #ffffff"),
    ("#a61b14", "#f61b14", ".alert: #ffffff on #f61b14"),
    ("#0b57a4", "blue", "not as #rrggbb"),
    ("background:#ffffff", "background:#ffffff url(a.png)", "a style"),
    ("<p>Sound.</p>", "", "cat1 says"),
    ("<p>Clay</p>", "<p>Slate</p>", "cat1 says"),
    ("</em><p>Two &lt;are&gt; gone.</p>", "</em>", "what needs attention says"),
    ('<section id="attention">', '<section id="later">', "not the list of what needs attention"),
    ("<p>Sound.</p>", "<p>Sound.", "closes"),
    ("<p>Office</p>", "", "header says"),
    ("<dt>Client</dt>", "<dt>Agent</dt>", "header says"),
    ("<dd>Mr Holm</dd>", "", "header says"),
    ("<footer>Fine print</footer>", "<footer>Print</footer>", "footer says"),
    ("<footer>Fine print</footer>", "", "the page is made of"),
    ("<main>", "<nav></nav><main>", "the page is made of"),
    (' lang="en"', ' lang="fr"', "not said to be English"),
    ('<meta name="viewport" content="width=device-width">', "", "no viewport"),
    ("nav{display:none}", "x{}", "no rule nav"),
    (";height:auto", "", "no rule img"),
    ("object-fit:contain", "width:auto", "no rule img"),
    ('<a href="#attention">Urgent</a> ', "", "contents"),
    ('<span class="alert">Bad</span>', "<span>Bad</span>", "red are"),
    ('<em class="alert">Bad</em>', "Bad", "urgent red are"),
]


class CheckWebPageTest(unittest.TestCase):
    def test_each_kind_of_fault_is_found(self):
        self.assertEqual(check.faults(PAGE.encode(), CONTENT), [])
        for before, after, told in BROKEN:
            with self.subTest(before=before, after=after):
                self.assertEqual(PAGE.count(before), 1)
                self.assertIn(told, "\n".join(check.faults(PAGE.replace(before, after).encode(), CONTENT)))


if __name__ == "__main__":
    unittest.main()
