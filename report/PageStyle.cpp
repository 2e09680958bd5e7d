// The page's style sheet. The pictures' lines have colours for both grounds; only their texts follow the page's.
#include "report/PageWriter.h"

namespace report {

const char* const PageStyle = R"css(
:root { color-scheme: light dark; --ground: #fff; --panel: #f6f8fa; --text: #1b2430; --soft: #5b6775; --line: #d5dce3; }
@media (prefers-color-scheme: dark) {
  :root { --ground: #14181d; --panel: #1c2229; --text: #e4e9ee; --soft: #9aa7b4; --line: #35404b; }
}
* { box-sizing: border-box; }
body { margin: 0 auto; max-width: 90rem; padding: 1rem; background: var(--ground); color: var(--text);
  font: 1rem/1.45 system-ui, "DejaVu Sans", sans-serif; }
h1 { font-size: 1.6rem; margin: 0; }
h2 { font-size: 1.3rem; margin: 2rem 0 .8rem; padding-bottom: .2rem; border-bottom: 2px solid var(--line); }
h3 { font-size: 1rem; margin: 0 0 .4rem; }
.files, figcaption, footer, .notes { color: var(--soft); }
.files { margin: .3rem 0 0; overflow-wrap: anywhere; }
.parts { columns: 2 34rem; column-gap: 1rem; }
.part { margin: 0 0 1rem; padding: .8rem; background: var(--panel); border: 1px solid var(--line); border-radius: .5rem;
  break-inside: avoid; }
.wide { column-span: all; margin: 1rem 0; }
.said { border-left: .4rem solid #2f7fc1; }
.said p { margin: 0; font-size: 1.15rem; }
.scroll { overflow-x: auto; }
svg { display: block; width: 100%; height: auto; max-width: 38rem; margin: auto; }
svg text { fill: var(--text); }
figcaption { margin-top: .4rem; font-size: .875rem; }
figcaption b { white-space: nowrap; }
.none { padding: 2rem 0; text-align: center; color: var(--soft); }
table { width: 100%; border-collapse: collapse; font-size: .875rem; font-variant-numeric: tabular-nums; }
th, td { padding: .15rem .5rem; text-align: right; white-space: nowrap; border-bottom: 1px solid var(--line); }
thead th { color: var(--soft); font-weight: 600; }
tbody th { font-weight: 400; color: var(--soft); }
tbody th, th + td { white-space: normal; }
.left, tbody th { text-align: left; }
.notes { padding-left: 1.2rem; font-size: .875rem; }
.notes li { margin-bottom: .3rem; max-width: 80ch; }
footer { margin-top: 2rem; font-size: .8rem; }
@media print {
  @page { margin: 14mm; }
  :root { --ground: #fff; --panel: #fff; --text: #000; --soft: #444; --line: #bbb; font-size: 9pt; }
  body { padding: 0; max-width: none; }
  .parts { columns: 2; }
  .middle { column-span: all; margin: 1rem 0; }
  .scroll { overflow: visible; }
  th, td { padding: 0 .25rem; }
  tr, li { break-inside: avoid; }
  h2, h3 { break-after: avoid; }
}
)css";

}  // namespace report
