#pragma once
// Lays the bands of a compiled layout out over the rows, page by page, in memory.
#include "compiled_layout.h"
#include "context/fwd.h"
#include "rendered_report.h"
#include "report_data.h"

namespace tallora::report {

struct PageGeometry {
    QPageLayout pageLayout;    // with the margins in use
    double scale = 1;          // content to page
    double contentHeight = 0;  // dots at the layout's scale
};

// Throws ReportError "file:line: ..." when a band is taller than the room a page leaves.
RenderedReport paginate(CompiledLayout& layout, const ReportRows& rows,
                        const PageGeometry& geometry, const FontBook& fonts,
                        const WorkingContext& ctx, const QString& layoutPath);

}  // namespace tallora::report
