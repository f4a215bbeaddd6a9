#pragma once

#include "FilterOptions.h"

#include <QString>
#include <QStringList>

#include <memory>

class QTextStream;
class TQXTreeControl;

// Prints a view's tree in one output format. Formats are found by name, so
// that a new one is one more entry in the table of formats.
class TQXTreeWriter {
public:
    virtual ~TQXTreeWriter() = default;

    virtual void Write(const TQXTreeControl& tree, QTextStream& out) const = 0;
    // The root-item filter the tree was listed with, for formats that say it.
    void SetFilter(const TQXFilterInForce& filter) { FFilter = filter; }

    // The format names, the default first.
    static QStringList Formats();
    // The writer of a format name from Formats(); null for any other.
    static std::unique_ptr<TQXTreeWriter> Create(const QString& format);

protected:
    TQXFilterInForce FFilter;
};
