#pragma once
// Repair and compaction of one database file.
#include <QString>

namespace tallora::store {

struct RepairResult {
    bool damaged = false;    // the integrity check found a fault
    QString damagedCopy;     // where the damaged file was kept, when it was replaced
    int rowsRecovered = 0;
    int rowsCounted = -1;  // the rows the damaged file said it held; -1 when it could not tell
};

// Checks the file's integrity. A sound file is left as it is. A damaged one is rebuilt: every
// table, row, index and view that can still be read goes into a fresh file, which takes the
// original's name, and the damaged file is kept as "<name>.damaged-<timestamp>" in
// `damagedFolder` (made when missing), or beside the file when none is given.
// Throws StoreError, leaving the file untouched, when nothing at all can be read from it.
RepairResult repairDatabase(const QString& path, const QString& damagedFolder = {});

// Writes a compacted copy of `source` to `target` (which must not exist).
void compactDatabase(const QString& source, const QString& target);

}  // namespace tallora::store
