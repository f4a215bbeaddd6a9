#pragma once

#include "formshow/FormLayout.h"

#include <QString>
#include <QStringList>

class TQXDataAccessInterface;
class TQXDataSet;
class TQXItem;

// Turns the stored words of one screen map into boxes placed by line and
// column, without widgets: VisualAge Generator 4.5 maps (language 20500) and
// CICS BMS map macros (language 20525). A position counter, reset by the
// keywords, says which word is a value: one screen line is 20 pixels, one
// column 10.
//
// Where a word stands at a counted position but is no number, the builders
// differ from a plain conversion in one respect: a word that directly
// follows POS (BMS) or row, column or bytes (VisualAge) raises the
// conversion error; any other (an operand written before POS, such as
// ATTRB=(ASKIP,NORM)) is skipped, its operand counted as not understood, and
// the later rules still see it, so that such maps draw.
class TQXFormBuilder {
public:
    static constexpr int LinePixels = 20;
    static constexpr int ColumnPixels = 10;
    static constexpr int BoxHeight = 20;
    static constexpr int WindowWidth = 870;
    static constexpr int WindowHeight = 640;

    static const QString VisualAgeLanguage; // "20500"
    static const QString BmsLanguage;       // "20525"
    // The text of the one box an unsupported language gets.
    static const QString UnsupportedText;

    // The three lines of the word query of the item's object: word, type,
    // row id and language id, in source order.
    static QStringList WordQuery(const TQXItem& item);

    // Builds from the open word query, positioned on its first record, by
    // the language of that record. Throws EQXError for a conversion error.
    static TQXFormLayout Build(TQXDataSet& words, TQXDataAccessInterface& dataAccess,
                               const TQXItem& item, int windowWidth = WindowWidth);

    // The two builders. A VisualAge constant's text is read from its row in
    // QXROW through the data-access object.
    static TQXFormLayout VAG45_BuildForm(TQXDataSet& words, TQXDataAccessInterface& dataAccess,
                                         const TQXItem& item);
    static TQXFormLayout BMS_BuildForm(TQXDataSet& words, TQXDataAccessInterface& dataAccess,
                                       const TQXItem& item);
};
