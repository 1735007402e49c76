#pragma once
// Report layouts are text files (<name>.rpt) read when a report runs, so that an
// installation can change a layout without rebuilding the program.
//
// The form, line by line:
//  - one statement per line: a keyword, then attributes `name=value` or bare flags;
//  - a value with blanks is written in double quotes; a quote inside it is doubled;
//  - '#' at the start of a line or after a blank starts a comment; blank lines are ignored;
//  - lengths are millimetres from the top left corner of the band, inside the margins;
//    font sizes are points.
//
//  page  size=A4|A3|A5|Letter|Legal orientation=portrait|landscape
//        left=15 right=15 top=12 bottom=12                margins; the job's own replace them
//  font  family="DejaVu Sans" size=9 [bold] [italic]       the font of the texts after it
//  data  file=0 source=Clients [order="+client"]          the rows: a table or stored query
//                                                          (view) of the job's DataFiles(file)
//  join  file=1 source=Clients key=client field=cliente    after data: the fields of another
//        [as=Name]                                         table or query, of any of the
//                                                          DataFiles, for each row those of
//                                                          the first row whose `key` equals
//                                                          the row's `field` (empty when none);
//                                                          with `as` its fields are written
//                                                          {Name.field}, so that one table
//                                                          can be joined on two fields
//  band  KIND [height=H] [field=F] [repeat] [below]       starts a band; the items under it
//                                                          belong to it
//  text  x= y= w= [h=] [size=] [family=] [bold] [italic] [color=#rrggbb]
//        [align=left|center|right] [overflow=ellipsis|wrap] value="..."
//  line  x1= y1= x2= y2= [width=0.2] [color=#rrggbb]
//  box   x= y= w= h= [fill=#rrggbb] [border=0.2] [color=#rrggbb]
//  qr    x= y= size= value="..."                           a QR code (error correction M) of
//                                                          the value, `size` mm square, drawn
//                                                          as boxes; the value takes literal
//                                                          text and {@formulas} only, and an
//                                                          empty value draws nothing
//  Any text, line, box or qr may add when=NAME: it prints only when the formula NAME holds a
//  value, that is neither empty nor a zero amount ("0", "0,00"), so that a document's
//  optional rows (a second IVA rate, a withholding) leave no empty captions behind;
//  when=A|B|C prints when any of them does.
//
// Band kinds: report-header (first page; with `below`, under its page and column headers
// rather than above them), page-header and column-header (every page),
// group-header field=F [repeat] and group-footer field=F (around the rows of each value of F;
// several group fields nest in the order their headers are written), detail (once per row),
// page-footer (foot of every page), report-footer (after the last row).
// A band is as tall as `height` or as its lowest item, whichever is more; a wrapped text
// makes its band taller, so texts never run into each other.
//
// The value of a text joins literal text and values in braces:
//   {@name}              the formula `name` of the job (empty when the job does not give it)
//   {field}              a field of the current row, also {Table.field}; a joined table's
//                        field is written {Table.field}, or {field} when the rows have no
//                        field of that name
//   {field|money}        formats: money (Format_Import; an integer is a Currency value in
//                        ten-thousandths, a real is units), amount (money, blank for
//                        zero), quantity (Format_Quantitat), date (dd/mm/yyyy)
//   {sum(field, scope)|money}   a sum over scope group, page, carried (all rows printed so
//                        far) or report (every row); {sum(a - b, scope)} sums a less b
//   {count(scope)}       the number of rows of that scope
//   {#page} {#pages}     this page's number, the number of pages (a text holding {#pages}
//                        stays on one line)
//   {{ and }}            a brace
// In a header the current row is the next row to print; in a footer, the last one printed.
// A text that does not fit its width ends with an ellipsis, unless overflow=wrap.
//
// A complete layout:
//
//   # Customers: code and name.
//   page  size=A4 orientation=portrait left=15 right=15 top=12 bottom=12
//   font  family="DejaVu Sans" size=9
//   data  file=0 source=Clients order="+client"
//
//   band page-header height=16
//     text x=0   y=0 w=120 size=11 bold value="{@Nom}"
//     text x=120 y=0 w=60  align=right value="{@lbl_fecha}"
//     text x=0   y=7 w=180 size=14 bold align=center value="{@lbl_titulo}"
//   band column-header height=7
//     box  x=0 y=0 w=180 h=6 fill=#e6e6e6
//     text x=1  y=0 w=16 h=6 bold align=right value="{@lbl_codigo}"
//     text x=20 y=0 w=160 h=6 bold value="{@lbl_razon_social}"
//   band group-header field=provincia height=6
//     text x=0 y=0 w=180 bold value="{provincia}"
//   band detail height=5
//     text x=1  y=0 w=16 align=right value="{client}"
//     text x=20 y=0 w=120 value="{nom}"
//     text x=140 y=0 w=40 align=right value="{saldo|money}"
//   band group-footer field=provincia height=6
//     line x1=140 y1=0.5 x2=180 y2=0.5
//     text x=140 y=1 w=40 align=right bold value="{sum(saldo, group)|money}"
//   band page-footer height=6
//     text x=0 y=1 w=180 align=right value="{@lbl_pagina} {#page} / {#pages}"
//
// Faults are reported as "file:line: what is wrong".
#include "layout.h"

#include <QString>

namespace tallora::report {

// Reads the layout file; throws ReportError naming the file (and line) when it cannot be
// read or is not well formed.
Layout readLayout(const QString& path);
// The same on a text already read; `path` names it in errors.
Layout parseLayout(const QString& text, const QString& path);

}  // namespace tallora::report
