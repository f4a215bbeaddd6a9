#pragma once

#include <QLibrary>
#include <QString>

// The view library, loaded at run time from the executable's folder; loading
// it registers its forms with the class registry. It stays loaded for the
// life of the process.
class TQXViewLibrary {
public:
    // Throws EQXError with the loader's reason when the library cannot be
    // loaded or registers no TQXView.
    void Load(const QString& folder);
    QString FileName() const { return FLibrary.fileName(); }

private:
    QLibrary FLibrary;
};
