#pragma once

/// The style sheet of all report pages: the colours of the counter program, small screens and paper.
inline constexpr char pageStyle[] = R"(
:root { color-scheme: light; --ink: #22303a; --paper: #fbf8f1; --accent: #0f6a62; --line: #d9d3c4; --soft: #5a6469; }
* { box-sizing: border-box; }
body { margin: 0 auto; max-width: 72rem; padding: 0 1rem 2rem; background: var(--paper); color: var(--ink);
    font: 1rem/1.45 system-ui, "Segoe UI", "DejaVu Sans", sans-serif; overflow-wrap: anywhere; }
header { padding: 1rem 0 .25rem; border-bottom: 3px solid var(--accent); }
h1 { margin: 0; font-size: 1.6rem; line-height: 1.2; }
h2 { margin: 2rem 0 .5rem; font-size: 1.2rem; color: var(--accent); }
h3 { margin: 1.25rem 0 .25rem; font-size: 1rem; }
p { margin: .5rem 0; max-width: 45rem; }
a { color: var(--accent); }
.centre { margin: 0 0 .25rem; font-size: .9rem; }
.centre a { color: var(--soft); text-decoration: none; }
nav { display: flex; flex-wrap: wrap; gap: .5rem 1.5rem; align-items: center; padding: .75rem 0; }
nav ul { display: flex; flex-wrap: wrap; gap: .25rem; margin: 0; padding: 0; list-style: none; }
nav a, button { display: inline-block; min-height: 2.5rem; padding: .45rem .8rem; border: 1px solid var(--accent);
    border-radius: 6px; background: #fff; color: var(--accent); font: inherit; text-decoration: none; cursor: pointer; }
nav a[aria-current], button { background: var(--accent); color: #fff; }
a:focus-visible, button:focus-visible, input:focus-visible { outline: 3px solid #c98a00; outline-offset: 2px; }
form { display: flex; flex-wrap: wrap; gap: .5rem; align-items: center; }
input { min-height: 2.5rem; padding: .3rem .5rem; border: 1px solid var(--soft); border-radius: 6px; font: inherit;
    background: #fff; color: inherit; }
.tiles { display: grid; grid-template-columns: repeat(auto-fit, minmax(9.5rem, 1fr)); gap: .75rem; margin: 1rem 0; }
.tiles div { padding: .6rem .8rem; background: #fff; border: 1px solid var(--line); border-radius: 8px; }
.tiles dt { font-size: .85rem; color: var(--soft); }
.tiles dd { margin: 0; }
.tiles strong { display: block; font-size: 1.5rem; line-height: 1.25; font-variant-numeric: tabular-nums; }
.tiles span { font-size: .85rem; color: var(--soft); }
table { width: 100%; margin: .5rem 0; border-collapse: collapse; background: #fff; border: 1px solid var(--line); }
th, td { padding: .35rem .6rem; text-align: start; vertical-align: top; border-bottom: 1px solid var(--line); }
th { font-size: .85rem; color: var(--soft); }
.figure { text-align: end; font-variant-numeric: tabular-nums; overflow-wrap: normal; }
tfoot td { font-weight: 700; border-top: 2px solid var(--accent); }
@media (min-width: 62rem) { .beside { display: grid; grid-template-columns: minmax(0, 26rem) minmax(0, 1fr); gap: 1.5rem; } }
figure { margin: .5rem 0; }
figure svg { display: block; width: 100%; max-width: 52rem; height: auto; background: #fff; border: 1px solid var(--line); }
figcaption { font-size: .9rem; color: var(--soft); }
.bar { display: block; width: 100%; min-width: 3rem; height: .6rem; margin-top: .4rem; }
svg text { font-family: inherit; fill: var(--ink); }
.free { fill: #fff; stroke: #e4dfd2; }
.booked { fill: #78c6cd; } .paid { fill: #17665f; } .ground { fill: #f2de96; }
svg text.onpaid { fill: #fff; }
footer { margin-top: 2rem; padding-top: .5rem; border-top: 1px solid var(--line); font-size: .85rem; color: var(--soft); }
@media (max-width: 40rem) {
    body { padding: 0 .6rem 1.5rem; }
    h1 { font-size: 1.3rem; }
    th, td { padding: .3rem .4rem; }
    .tiles { grid-template-columns: repeat(2, minmax(0, 1fr)); gap: .5rem; }
    .tiles strong { font-size: 1.25rem; }
    table.wide, .wide tbody, .wide tfoot, .wide tr, .wide td { display: block; width: 100%; }
    .wide thead { display: none; }
    .wide tr { padding: .4rem 0; border-bottom: 1px solid var(--line); }
    .wide td { display: flex; gap: .75rem; justify-content: space-between; padding: .1rem .6rem; border: 0; text-align: end; }
    .wide td:empty { display: none; }
    .wide td::before { content: attr(data-label); flex: none; font-size: .85rem; color: var(--soft); }
}
@media print {
    @page { margin: 14mm; }
    body { max-width: none; padding: 0; background: #fff; color: #000; font-size: 10pt; }
    nav { display: none; }
    h2 { break-after: avoid; margin-top: 1rem; color: #000; }
    h3 { break-after: avoid; }
    tr, figure, .tiles { break-inside: avoid; }
    thead { display: table-header-group; }
    tfoot { display: table-row-group; }
    th, td { padding: .15rem .4rem; }
    a { color: inherit; text-decoration: none; }
    figure svg { max-width: 15cm; }
    svg rect { print-color-adjust: exact; -webkit-print-color-adjust: exact; }
}
)";
