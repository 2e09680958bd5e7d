#!/usr/bin/python3
"""Makes the manual's one page of HTML from its chapters: packaging/manual.py OUT CHAPTER... Needs cmark-gfm.

A link to a chapter, or to a heading of one, becomes a link within the page. A link that leads nowhere, a picture that is
not there, two headings of one name and words taken for HTML end it with exit code 1 and a line for each."""

import html
import os
import re
import shutil
import subprocess
import sys

DEEPEST = 2  # headings that stand in the table of contents
STYLE = """
:root { color-scheme: light dark; --ink: #1d1f21; --ground: #ffffff; --faint: #f0f2f4; --line: #cfd4d9; --link: #1b62a5; }
@media (prefers-color-scheme: dark) {
  :root { --ink: #e2e4e6; --ground: #1e1f21; --faint: #2a2c2f; --line: #484c51; --link: #7db7ee; }
}
body { margin: 0; font: 16px/1.5 sans-serif; color: var(--ink); background: var(--ground); }
a { color: var(--link); }
nav { padding: 1em 1.5em; font-size: 0.9em; background: var(--faint); }
nav a { display: block; margin: 0.2em 0; text-decoration: none; }
nav .level2 { padding-left: 1em; }
main { max-width: 52em; padding: 0 1.5em 4em; }
h1, h2 { border-bottom: 1px solid var(--line); padding-bottom: 0.2em; margin-top: 2em; }
code, pre { font-family: "DejaVu Sans Mono", monospace; font-size: 0.88em; background: var(--faint); }
pre { padding: 0.8em; overflow-x: auto; }
code { padding: 0.1em 0.25em; }
pre code { padding: 0; font-size: 1em; }
table { border-collapse: collapse; margin: 1em 0; display: block; overflow-x: auto; }
th, td { border: 1px solid var(--line); padding: 0.3em 0.6em; text-align: left; vertical-align: top; }
th { background: var(--faint); }
img { max-width: 100%; height: auto; border: 1px solid var(--line); background: #ffffff; }
@media (min-width: 70em) {
  nav { position: fixed; top: 0; bottom: 0; width: 17em; overflow-y: auto; }
  main { margin-left: 20em; }
}
@media print { nav { display: none; } main { margin: 0; max-width: none; } pre { white-space: pre-wrap; } }
"""


def converted(file):
    command = ["cmark-gfm", "--extension", "table", file]
    return subprocess.run(command, check=True, capture_output=True, encoding="utf-8").stdout


def text_of(markup):
    return html.unescape(re.sub(r"<[^>]*>", "", markup))


def name_of(heading):
    """A heading's name in a link, as the places that show Markdown make it."""
    return re.sub(r"[^\w\- ]", "", text_of(heading).strip().lower()).replace(" ", "-")


class Page:
    """What the chapters make together, and what is wrong with them."""

    def __init__(self, chapters):
        self.chapters = chapters
        self.contents, self.bodies, self.troubles = [], [], []
        self.names = set()
        self.pictures = {}  # by the name in the page
        self.starts = {os.path.realpath(chapter): "" for chapter in chapters}  # the name of each one's first heading
        for chapter in chapters:
            self.convert(chapter)
        self.bodies = [self.linked(chapter, body) for chapter, body in zip(chapters, self.bodies)]

    def convert(self, chapter):
        body = converted(chapter)
        for words in re.findall(r"[^\n]*<!-- raw HTML omitted -->[^\n]*", body):
            self.troubles.append(f"{chapter}: words taken for HTML in \"{text_of(words)}\"")
        self.bodies.append(re.sub(r"<h(\d)>(.*?)</h\1>", lambda found: self.heading(chapter, *found.groups()), body))

    def heading(self, chapter, level, words):
        name = name_of(words)
        if name in self.names:
            self.troubles.append(f"{chapter}: a second heading #{name}")
        self.names.add(name)
        self.starts[os.path.realpath(chapter)] = self.starts[os.path.realpath(chapter)] or name
        if int(level) <= DEEPEST:
            self.contents.append(f'<a class="level{level}" href="#{name}">{words}</a>\n')
        return f'<h{level} id="{name}">{words}</h{level}>'

    def linked(self, chapter, body):
        body = re.sub(r'(?<=<a href=")[^"]*', lambda link: self.link(chapter, html.unescape(link[0])), body)
        return re.sub(r'(?<=src=")[^"]*', lambda link: self.picture(chapter, html.unescape(link[0])), body)

    def link(self, chapter, link):
        if re.match(r"\w+:", link):
            return html.escape(link)
        path, _, name = link.partition("#")
        if path:
            target = os.path.realpath(os.path.join(os.path.dirname(chapter), path))
            if target not in self.starts:
                self.troubles.append(f"{chapter}: {link} is no chapter")
            name = name or self.starts.get(target, "")
        if name not in self.names:
            self.troubles.append(f"{chapter}: nothing is called {link}")
        return "#" + name

    def picture(self, chapter, link):
        file = os.path.join(os.path.dirname(chapter), link)
        if not os.path.exists(file):
            self.troubles.append(f"{chapter}: no picture {link}")
        name = "images/" + os.path.basename(link)
        self.pictures[name] = file
        return name

    def text(self):
        return (f'<!DOCTYPE html>\n<html lang="en">\n<head>\n<meta charset="utf-8">\n'
                f'<meta name="viewport" content="width=device-width, initial-scale=1">\n'
                f"<title>Tidewatch manual</title>\n<style>{STYLE}</style>\n</head>\n<body>\n"
                f"<nav>\n{''.join(self.contents)}</nav>\n<main>\n" + "\n".join(self.bodies) +
                "\n</main>\n</body>\n</html>\n")

    def write(self, folder):
        os.makedirs(os.path.join(folder, "images"), exist_ok=True)
        for name, file in self.pictures.items():
            shutil.copyfile(file, os.path.join(folder, name))
        with open(os.path.join(folder, "manual.html"), "w", encoding="utf-8") as file:
            file.write(self.text())


def main():
    page = Page(sys.argv[2:])
    for trouble in page.troubles:
        print(trouble, file=sys.stderr)
    if page.troubles:
        sys.exit(1)
    page.write(sys.argv[1])


if __name__ == "__main__":
    main()
