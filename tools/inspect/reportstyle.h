// How the report looks. Holds neither "<" nor "&", so that the page stays well-formed XML.
#pragma once

namespace inspect {

inline constexpr const char* kReportStyle = R"(
:root {
  color-scheme: light dark;
  --page: #fff; --panel: #f5f6f8; --ink: #1b1f24; --quiet: #57606a; --rule: #d0d5db; --link: #0a58a8;
  --good: #e3f4e6; --good-edge: #1a7f37; --warn: #fff4d6; --warn-edge: #9a6700;
  --bad: #fde7e7; --bad-edge: #b42318;
  --step: #dbe6f3; --step-edge: #4a76a8; --module: #dcefe0; --module-edge: #3b8150;
}
@media (prefers-color-scheme: dark) { :root {
  --page: #14171a; --panel: #1d2125; --ink: #e6e9ec; --quiet: #a3abb4; --rule: #3a4149; --link: #8cc0ff;
  --good: #16301d; --good-edge: #57ab6a; --warn: #352b10; --warn-edge: #d3a337;
  --bad: #3d1a1a; --bad-edge: #f07f78;
  --step: #1f3550; --step-edge: #6f9fd4; --module: #1c3a26; --module-edge: #62ad78;
} }
@media print { :root {
  color-scheme: light;
  --page: #fff; --panel: #fff; --ink: #000; --quiet: #333; --rule: #999; --link: #000;
  --good: #fff; --good-edge: #1a7f37; --warn: #fff; --warn-edge: #9a6700;
  --bad: #fff; --bad-edge: #b42318;
  --step: #e8e8e8; --step-edge: #555; --module: #fff; --module-edge: #555;
} }
* { box-sizing: border-box; }
body {
  margin: 0 auto; max-width: 1240px; padding: 24px 32px 64px; background: var(--page);
  color: var(--ink); font: 15px/1.5 system-ui, "Noto Sans CJK SC", sans-serif;
  overflow-wrap: anywhere;
}
h1 { font-size: 26px; margin: 0 0 12px; }
h2 { font-size: 20px; margin: 40px 0 12px; padding-top: 12px; border-top: 1px solid var(--rule); }
h3 { font-size: 16px; margin: 20px 0 6px; }
p { margin: 0 0 12px; }
a { color: var(--link); }
.lead { color: var(--quiet); }
.verdict {
  font-size: 18px; font-weight: 600; padding: 12px 16px; border-radius: 6px;
  border-left: 6px solid;
}
.verdict.good { background: var(--good); border-color: var(--good-edge); }
.verdict.warn { background: var(--warn); border-color: var(--warn-edge); }
.verdict.bad { background: var(--bad); border-color: var(--bad-edge); }
dl { display: grid; grid-template-columns: repeat(auto-fit, minmax(260px, 1fr)); gap: 10px 24px; margin: 16px 0; }
dt { color: var(--quiet); font-size: 13px; }
dd { margin: 0; }
nav ul { display: flex; flex-wrap: wrap; gap: 4px 20px; padding: 0; margin: 0; list-style: none; }
table { width: 100%; table-layout: fixed; border-collapse: collapse; font-size: 14px; }
th, td { text-align: left; vertical-align: top; padding: 6px 10px; border-bottom: 1px solid var(--rule); }
th { background: var(--panel); color: var(--quiet); font-weight: 600; }
td ul, td ol { margin: 0; padding-left: 20px; }
.nested { display: block; }
tr.bad td:first-child { box-shadow: inset 4px 0 var(--bad-edge); }
tr.warn td:first-child { box-shadow: inset 4px 0 var(--warn-edge); }
.bad .mark { color: var(--bad-edge); }
.warn .mark { color: var(--warn-edge); }
pre { margin: 0; white-space: pre-wrap; font: 13px/1.45 ui-monospace, "DejaVu Sans Mono", monospace; }
td pre { padding-top: 2px; }
pre.block { background: var(--panel); border: 1px solid var(--rule); border-radius: 6px; padding: 12px 16px; }
details { margin: 12px 0; }
summary { cursor: pointer; font-weight: 600; padding: 4px 0; }
figure { margin: 0 0 12px; }
figcaption { display: flex; gap: 20px; color: var(--quiet); font-size: 13px; margin-bottom: 6px; }
.key::before {
  content: ""; display: inline-block; width: 14px; height: 12px; margin-right: 6px; border: 1px solid;
  border-radius: 2px; vertical-align: -1px;
}
.key.step::before { background: var(--step); border-color: var(--step-edge); }
.key.module::before { background: var(--module); border-color: var(--module-edge); }
.key.failed::before { background: var(--bad); border-color: var(--bad-edge); }
svg { display: block; font-size: 13px; }
svg text { fill: var(--ink); }
svg text.beside { paint-order: stroke; stroke: var(--page); stroke-width: 4px; stroke-linejoin: round; }
svg text.tick { fill: var(--quiet); font-size: 12px; }
svg line { stroke: var(--rule); }
rect.step { fill: var(--step); stroke: var(--step-edge); }
rect.module { fill: var(--module); stroke: var(--module-edge); }
rect.failed { fill: var(--bad); stroke: var(--bad-edge); }
@media (max-width: 640px) {
  body { padding: 16px 14px 40px; }
  dl { grid-template-columns: 1fr; }
  svg { font-size: 11.5px; }
  thead { position: absolute; clip-path: inset(50%); width: 1px; height: 1px; overflow: hidden; }
  table, tbody, tr, td { display: block; width: auto; }
  tr { padding: 8px 0 8px 10px; border-bottom: 1px solid var(--rule); }
  tr.bad { box-shadow: inset 4px 0 var(--bad-edge); }
  tr.warn { box-shadow: inset 4px 0 var(--warn-edge); }
  tr.bad td:first-child, tr.warn td:first-child { box-shadow: none; }
  td { border: 0; padding: 2px 0; }
  td:empty { display: none; }
  td::before { content: attr(data-title); display: block; color: var(--quiet); font-size: 12px; }
  .nested { padding-left: 0 !important; }
}
@media print {
  body { max-width: none; padding: 0; font-size: 11px; }
  table, pre, dt { font-size: 10px; }
  tr, .verdict { break-inside: avoid; }
  h2, h3, summary, .lead, figcaption, .ticks { break-after: avoid; }
  nav { display: none; }
  .print summary { list-style: none; }
  .print::details-content { content-visibility: visible; block-size: auto; }
}
)";

}  // namespace inspect
