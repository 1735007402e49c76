#pragma once
// The nine header lines of an interchange file, as the import screen shows and uses them.
#include "context/fwd.h"

#include <QString>
#include <QStringList>

namespace tallora::interchange {

struct FileHeader {
    // What ListArchivo shows: creation, company, origin folder, tax number, version, each
    // after its caption. Empty when the file could not be read.
    QStringList ListArchivo;
    QString content;  // "ALL" for a whole exercise, "PAR" for a selection
    // The selection's marks (lines 7 to 9); read only when the content is not "ALL".
    bool customers = false;
    bool suppliers = false;
    bool chart = false;

    bool isWhole() const { return content == QStringLiteral("ALL"); }
    // The six characters from the 19th of the origin line: where the file was made.
    QString originWord() const;
    // The version line's last four characters, trimmed.
    QString version() const;
};

// The header of these lines (the first nine of a file, decoded, without line ends).
FileHeader parseHeader(const WorkingContext& ctx, const QStringList& lines);
// The header of the file at `path`; an empty ListArchivo when it cannot be read.
FileHeader readHeader(const WorkingContext& ctx, const QString& path);

// A line of the file without its line end, from Windows-1252.
QString decodeLine(const QByteArray& bytes);

}  // namespace tallora::interchange
