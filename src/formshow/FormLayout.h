#pragma once

#include <QString>
#include <QStringList>

#include <vector>

// One read-only box of a drawn screen map, in pixels of the window.
struct TQXFormBox {
    int Top = 0;
    int Left = 0;
    int Width = 0;
    int Height = 20;
    QString Text;
    // Shown on hover when not empty: the field's name.
    QString Hint;
    // Drawn in the button-face colour: a constant of the map.
    bool Constant = false;
    bool Visible = true;
};

// What the builders make of a map's words: the boxes in the order they were
// created, and the operands whose words stood where a number was expected
// without being one (skipped, so that the rest of the map still draws).
struct TQXFormLayout {
    std::vector<TQXFormBox> Boxes;
    // One name per operand that was not understood, in source order.
    QStringList NotUnderstood;
    // The map's language is neither of the two the viewer draws.
    bool Unsupported = false;

    // The window's status line: the fields drawn and what was skipped.
    QString StatusText() const;
};
