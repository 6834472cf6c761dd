#ifndef MORVANE_CSVCOLUMN_H
#define MORVANE_CSVCOLUMN_H

#include "frame/morvane_global.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace Morvane {

// One column of a semicolon-separated file as CSVFileLoader reads it: the
// heading and one value for each data row, in file order. A value is the
// cell exactly as it stood in the file: not trimmed, possibly empty.
//
// A column is a plain value: copying it shares the string list until one
// side changes it.
class MORVANE_EXPORT CSVColumn
{
public:
    CSVColumn();
    explicit CSVColumn(const QString &name);
    CSVColumn(const CSVColumn &other);
    CSVColumn &operator=(const CSVColumn &other);
    virtual ~CSVColumn();

    void SetName(const QString &name);
    QString GetName() const;

    // Appends one value behind those already there.
    void AddValue(const QString &value);

    // The values, one for each data row. The pointer points into this column:
    // it stays valid, and keeps pointing at the same list, as long as the
    // column lives and the loader that holds it is not changed.
    const QStringList *GetValues() const;

private:
    QString m_name;
    QStringList m_values;
};

} // namespace Morvane

#endif
