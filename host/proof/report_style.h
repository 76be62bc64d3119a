// How the page of a proof looks.
#pragma once

namespace riders::proof {

inline constexpr const char *kReportStyle = R"(
:root { color-scheme: light; --ink: #1c1c1a; --soft: #6a6862; --line: #dcd9d0; --warn: #8a3b00; --ground: #f6f4ee; }
* { box-sizing: border-box; }
body { margin: 0; background: var(--ground); color: var(--ink); line-height: 1.45;
       font-family: system-ui, -apple-system, "Segoe UI", Roboto, "Helvetica Neue", Arial, sans-serif; }
main, header, footer { max-width: 64rem; margin: 0 auto; padding: 0 1.25rem; }
header { padding-top: 2.5rem; padding-bottom: .5rem; }
h1 { font-size: 1.75rem; line-height: 1.2; margin: 0; overflow-wrap: anywhere; }
h2 { font-size: 1.25rem; margin: 0; }
h3 { font-size: 1rem; margin: 1.75rem 0 .25rem; break-after: avoid; }
p { margin: .35rem 0; }
.soft, figcaption, small { color: var(--soft); }
small { display: block; font-size: .8125rem; }
section { background: #fff; border: 1px solid var(--line); border-radius: 6px; margin: 1.5rem 0; padding: 1.5rem; }
.top { display: grid; grid-template-columns: minmax(9rem, 15rem) minmax(0, 1fr); gap: 1.5rem; align-items: start;
       margin-top: .75rem; }
.heading { display: flex; justify-content: space-between; align-items: baseline; gap: 1rem; flex-wrap: wrap; }
.sheet { position: relative; border: 1px solid var(--line); box-shadow: 0 1px 4px #0002; line-height: 0; }
.sheet img { width: 100%; height: auto; }
.sheet i { position: absolute; border: 2px solid #d3006a; outline: 1px solid #fff; }
.warnings { list-style: none; margin: .75rem 0; padding: 0; }
.warnings li { color: var(--warn); background: #fff3e6; border-left: 4px solid #e07a1f; padding: .4rem .75rem;
               margin: .3rem 0; border-radius: 0 4px 4px 0; overflow-wrap: anywhere; }
table { border-collapse: collapse; width: 100%; margin: .75rem 0 0; font-variant-numeric: tabular-nums; }
th, td { text-align: left; vertical-align: top; padding: .5rem .6rem .5rem 0; font-size: .9375rem; border-top: 1px solid var(--line); }
thead th { border-top: 0; color: var(--soft); font-weight: 500; font-size: .8125rem; }
tbody th { font-weight: 600; overflow-wrap: break-word; min-width: 7rem; max-width: 12rem; }
.values { white-space: nowrap; }
.off { color: var(--warn); font-weight: 600; }
.swatch { display: inline-block; width: .85em; height: .85em; border-radius: 50%; margin-right: .4em;
          border: 1px solid #0003; vertical-align: -.05em; print-color-adjust: exact;
          -webkit-print-color-adjust: exact; }
figure { margin: 0; }
figcaption { font-size: .8125rem; margin-top: .35rem; overflow-wrap: anywhere; }
figure img { border: 1px solid var(--line); display: block; max-width: 100%; height: auto; }
.rosette a { display: block; overflow: hidden; }
.rosette img { width: 200mm; max-width: none; margin-left: min(0px, calc(50% - 100mm)); }
.loupes { display: grid; grid-template-columns: repeat(auto-fill, minmax(11rem, 1fr)); gap: 1rem; margin-top: .75rem; }
.loupes a { display: block; overflow: hidden; aspect-ratio: 1; border: 1px solid var(--line); }
.loupes img { width: 200mm; max-width: none; border: 0; margin: calc(50% - 100mm); }
a { color: #0b5ea8; }
pre { white-space: pre-wrap; overflow-wrap: anywhere; font-size: .8125rem; background: var(--ground); padding: .75rem;
      border-radius: 4px; }
footer { padding-bottom: 3rem; font-size: .8125rem; }
@media (max-width: 46rem) {
  main, header, footer { padding-left: .75rem; padding-right: .75rem; }
  section { padding: 1rem; }
  .top { grid-template-columns: minmax(0, 1fr); }
  .sheet { max-width: 16rem; }
  thead { display: none; }
  tbody tr { display: block; border-top: 1px solid var(--line); padding: .5rem 0; }
  tbody th, tbody td { display: block; border: 0; padding: .1rem 0; }
  tbody td { padding-left: 7.5rem; min-height: 1.5rem; position: relative; }
  tbody td::before { content: attr(data-label); position: absolute; left: 0; color: var(--soft);
                     font-size: .8125rem; line-height: 1.8; }
  .bare td:not([data-label=Ink]) { display: none; }
  .rosette a { aspect-ratio: 1; border: 1px solid var(--line); }
  .rosette img { margin: calc(50% - 100mm); border: 0; }
  .rosette figcaption::after { content: " Here its middle; click for all of it."; }
}
@media print {
  body { background: #fff; font-size: 10pt; }
  main, header, footer { max-width: none; padding: 0; }
  section { border: 0; padding: 0; break-before: page; }
  section.short, section:first-of-type { break-before: auto; }
  th, td { font-size: 8.5pt; padding-right: .3rem; }
  small { font-size: 7.5pt; }
  tbody th { min-width: 0; }
  figure, tr, .warnings li { break-inside: avoid; }
  .top { grid-template-columns: 4.5cm minmax(0, 1fr); gap: 1rem; }
  .loupes { grid-template-columns: repeat(4, 1fr); }
  .rosette img { width: 170mm; margin: 0; }
}
)";

}  // namespace riders::proof
