#pragma once

// What a view test needs around a TQXView: scripted UI services, the host's
// base functions with one connection "Estate" served by a FakeDataAccess,
// and the view menu's check marks.
#include "FakeDataAccess.h"

#include "host/BaseFunctions.h"
#include "platform/ScriptedUIServices.h"
#include "platform/TreeControl.h"
#include "support/TreeTexts.h"
#include "view/View.h"

#include <QAction>

#include <QStringList>

#include <memory>

struct ViewFixture {
    // How the next connection behaves.
    bool HasFiles = true;
    QString FailTable;
    QString ConnectError;

    TQXScriptedUIServices Ui;
    TQXBaseFunctions Host;
    FakeDataAccess* Fake = nullptr; // owned by Host once connected

    ViewFixture() {
        Host.SetConnection(QStringLiteral("Estate"), QStringLiteral("/data/estate.kvdb"));
        Host.SetDataAccessFactory(
            [this](const QString&) -> std::unique_ptr<TQXDataAccessInterface> {
                if (!ConnectError.isEmpty())
                    throw EQXError(ConnectError);
                auto fake = std::make_unique<FakeDataAccess>();
                fake->HasFiles = HasFiles;
                fake->FailTable = FailTable;
                Fake = fake.get();
                return fake;
            });
    }

    template <typename View = TQXView>
    std::unique_ptr<View> MakeView(const QString& connection = QStringLiteral("Estate")) {
        return std::make_unique<View>(nullptr, 1, &Host, QStringLiteral("View 1"), connection,
                                      QString());
    }
};

// The checked items among the view menu's type, direction and level items.
inline QStringList CheckedItems(const TQXView& view) {
    QStringList checked;
    for (const char* name :
         {"Distribution1", "Dependencies1", "TopDown1", "BottomUp1", "System1", "Computer1",
          "Application1", "Package1", "Object1", "Entry1", "Code1", "Data1"})
        if (view.mnuView.FindItem(name)->isChecked())
            checked << name;
    return checked;
}
