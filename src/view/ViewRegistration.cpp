// Registers TQXView and TQXFormShow with the host's class registry while
// this library is loaded.
#include "formshow/FormShow.h"
#include "host/FormRegistrar.h"
#include "view/View.h"

namespace {

const TQXFormRegistrar
    ViewRegistrar(QStringLiteral("TQXView"),
                  [](QWidget* owner, int windowNumber, TQXBaseFunctionsInterface* baseFunctions,
                     const QString& documentName, const QString& connectionName,
                     const QString& commandText) -> std::unique_ptr<TQXFormInterface> {
                      return std::make_unique<TQXView>(owner, windowNumber, baseFunctions,
                                                       documentName, connectionName, commandText);
                  });

const TQXItemFormRegistrar FormShowRegistrar(QStringLiteral("TQXFormShow"),
                                             [](QWidget* owner, TQXDataAccessInterface* dataAccess,
                                                const TQXItem& item) -> std::unique_ptr<QWidget> {
                                                 return std::make_unique<TQXFormShow>(
                                                     owner, dataAccess, item);
                                             });

} // namespace
