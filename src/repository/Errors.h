#pragma once

#include <QString>

#include <stdexcept>

// The one exception type of the library and its host stand-in. It carries the
// message the user sees; operations that the host drives catch it and raise a
// new one with their own name as prefix.
class EQXError : public std::runtime_error {
public:
    explicit EQXError(const QString& message)
        : std::runtime_error(message.toStdString()), FMessage(message) {}

    const QString& Message() const noexcept { return FMessage; }

private:
    QString FMessage;
};

// Message of any exception as text; for catch blocks that re-raise with a prefix.
inline QString ExceptionMessage(const std::exception& e) {
    if (const auto* qx = dynamic_cast<const EQXError*>(&e))
        return qx->Message();
    return QString::fromStdString(e.what());
}
