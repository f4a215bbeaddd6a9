// The view driven without a user: the host's part (base functions, the
// connection, the refresh notice) played here, the user's part played on the
// view's own controls and tree.
#include "driver/ViewDriver.h"

#include "host/BaseFunctions.h"
#include "host/FormRegistry.h"
#include "platform/ScriptedUIServices.h"
#include "platform/TreeControl.h"
#include "repository/Errors.h"
#include "sqlaccess/SqlDataAccess.h"
#include "view/View.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>

#include <algorithm>
#include <deque>

namespace {

// What the view showed the user from a point on: messages and reported
// errors, the way they would have popped up.
class TShownSince {
public:
    explicit TShownSince(const TQXScriptedUIServices& ui)
        : FUi(ui), FMessages(ui.Messages().size()), FErrors(ui.Errors().size()) {}

    QStringList Texts() const {
        QStringList texts = FUi.Messages().mid(FMessages) + FUi.Errors().mid(FErrors);
        for (QString& text : texts)
            text = text.replace(QLatin1Char('\r'), QLatin1Char('\n')).trimmed();
        return texts;
    }
    // Throws the shown texts as one error, if anything was shown.
    void ThrowIfAny() const {
        const QStringList texts = Texts();
        if (!texts.isEmpty())
            throw EQXError(texts.join(QLatin1Char('\n')));
    }

private:
    const TQXScriptedUIServices& FUi;
    qsizetype FMessages;
    qsizetype FErrors;
};

QList<TQXTreeNode*> Children(const TQXTreeNode* node) {
    QList<TQXTreeNode*> children;
    for (int i = 0; i < node->ChildCount(); ++i)
        children << node->Child(i);
    return children;
}

QList<TQXTreeNode*> Roots(const TQXTreeControl& tree) {
    QList<TQXTreeNode*> roots;
    for (int i = 0; i < tree.RootCount(); ++i)
        roots << tree.Root(i);
    return roots;
}

} // namespace

// Declared in the order they must come up; they go down in reverse, the view
// (which closes its tables) before the connection it uses.
struct TQXViewDriver::Parts {
    TQXScriptedUIServices Ui;
    TQXBaseFunctions Host;
    TQXDataAccessInterface* Opened = nullptr;
    std::unique_ptr<TQXFormInterface> Form;
    TQXView* View = nullptr;
    bool Connected = false;
    QString Notice;
};

TQXViewDriver::TQXViewDriver(const QString& repository) {
    if (!qobject_cast<QApplication*>(QCoreApplication::instance()))
        throw EQXError(QStringLiteral("The view needs a QApplication"));
    auto parts = std::make_unique<Parts>();
    QString connection;
    if (!repository.isEmpty()) {
        connection = TQXBaseFunctions::ConnectionNameFor(repository);
        if (connection.isEmpty())
            connection = QStringLiteral("Repository");
        parts->Host.SetConnection(connection, repository);
        // Opened here, as the host opens a connection before its views use
        // it, so that an unreachable repository fails with the database's
        // reason.
        parts->Opened = parts->Host.GetDataAccess(connection);
        if (auto* notice = dynamic_cast<TQXRepositoryNotice*>(parts->Opened))
            parts->Notice = notice->TakeRepositoryNotice();
    }
    parts->Form = TQXFormRegistry::Create(QStringLiteral("TQXView"), nullptr, 1, &parts->Host,
                                          QStringLiteral("View 1"), connection, QString());
    parts->View = qobject_cast<TQXView*>(parts->Form.get());
    if (!parts->View)
        throw EQXError(QStringLiteral("TQXView is not a view"));
    FParts = std::move(parts);
}

TQXViewDriver::~TQXViewDriver() = default;

void TQXViewDriver::AnswerYes(bool yes) {
    FParts->Ui.SetDefaultAnswer(yes);
}

void TQXViewDriver::Apply(const TQXViewSettings& settings) {
    TQXView& view = View();
    const int level = view.cbViewBy->findText(level::Name(settings.Level));

    const TShownSince shown(Ui());
    // Type and direction first: the level's choice sets the option box by them.
    (settings.IsDependencies() ? view.rbDependencies : view.rbDistribution)->click();
    (settings.IsTopDown() ? view.rbTopDown : view.rbBottomUp)->click();
    view.cbViewBy->setCurrentIndex(level);
    emit view.cbViewBy->activated(level);
    view.tbRootItemLimit->setText(settings.LimitText);
    view.tbLimitChange(); // as when the box is left
    if (!view.cbOption->isHidden() && view.cbOption->isChecked() != settings.Option)
        view.cbOption->click();
    shown.ThrowIfAny();
}

void TQXViewDriver::Connect() {
    if (FParts->Connected)
        return;
    const TShownSince shown(Ui());
    View().ConnectToDB();
    shown.ThrowIfAny();
    FParts->Connected = true;
}

QString TQXViewDriver::ShowVariable(const QString& objectName, const QString& variableName) {
    Connect();
    const TShownSince shown(Ui());
    const QString missing = View().ShowVariableNamed(objectName, variableName);
    shown.ThrowIfAny();
    return missing;
}

void TQXViewDriver::Refresh() {
    TQXView& view = View();
    const TShownSince shown(Ui());
    if (!FParts->Connected) {
        view.RefreshContent(nullptr, nullptr, QString());
        shown.ThrowIfAny(); // a failed connection shows a message
        if (!view.DataAccess())
            throw EQXError(QStringLiteral("Could not connect to Database ") +
                           view.ConnectionName());
        FParts->Connected = true;
        // The host's refresh drops its errors; doing it again tells why.
        if (view.HostRefreshFailed() || Tree().RootCount() == 0)
            view.RefreshCurrentView();
    } else {
        view.RefreshCurrentView();
    }
    shown.ThrowIfAny();
}

void TQXViewDriver::Expand(TQXTreeNode* node) {
    if (!node || !TQXTreeControl::HasPlaceholder(node))
        return;
    const TShownSince shown(Ui());
    // A node left open by a failed expansion is opened again.
    if (node->Expanded())
        node->SetExpanded(false);
    node->SetExpanded(true); // the tree's expansion notice runs the view's NodeExpanded
    shown.ThrowIfAny();
}

bool TQXViewDriver::ExpandToDepth(int depth, int maxNodes) {
    std::deque<TQXTreeNode*> queue;
    for (TQXTreeNode* root : Roots(Tree()))
        queue.push_back(root);
    int count = Tree().NodeCount();
    while (!queue.empty()) {
        TQXTreeNode* node = queue.front();
        queue.pop_front();
        if (node->Level() >= depth)
            continue;
        if (TQXTreeControl::HasPlaceholder(node)) {
            if (count >= maxNodes)
                return false;
            Expand(node);
            count += static_cast<int>(Children(node).size());
        }
        for (TQXTreeNode* child : Children(node))
            queue.push_back(child);
    }
    return true;
}

bool TQXViewDriver::ExpandPath(const QStringList& texts) {
    QList<TQXTreeNode*> candidates = Roots(Tree());
    for (const QString& text : texts) {
        QList<TQXTreeNode*> next;
        bool found = false;
        for (TQXTreeNode* node : candidates) {
            if (node->Text() != text)
                continue;
            found = true;
            Expand(node);
            next += Children(node);
        }
        if (!found)
            return false;
        candidates = next;
    }
    return true;
}

QList<TQXTreeNode*> TQXViewDriver::NodesOnPath(const QStringList& texts) {
    QList<TQXTreeNode*> path;
    QList<TQXTreeNode*> candidates = Roots(Tree());
    for (const QString& text : texts) {
        const auto match =
            std::find_if(candidates.cbegin(), candidates.cend(),
                         [&text](TQXTreeNode* node) { return node->Text() == text; });
        if (match == candidates.cend())
            return {};
        path << *match;
        if (path.size() < texts.size()) {
            Expand(*match);
            candidates = Children(*match);
        }
    }
    return path;
}

QStringList TQXViewDriver::OpenDocument(const QString& path) {
    const TShownSince shown(Ui());
    View().OpenViewDoc(path);
    FParts->Connected = View().DataAccess() != nullptr;
    return shown.Texts();
}

void TQXViewDriver::SaveDocument(const QString& path) {
    View().SaveViewDoc(path);
}

TQXView& TQXViewDriver::View() {
    return *FParts->View;
}

TQXTreeControl& TQXViewDriver::Tree() {
    return *FParts->View->tvMain;
}

TQXBaseFunctions& TQXViewDriver::BaseFunctions() {
    return FParts->Host;
}

TQXScriptedUIServices& TQXViewDriver::Ui() {
    return FParts->Ui;
}

qint64 TQXViewDriver::RoundTrips() const {
    const TQXDataAccessInterface* access =
        FParts->View->DataAccess() ? FParts->View->DataAccess() : FParts->Opened;
    const auto* sql = dynamic_cast<const SqlDataAccess*>(access);
    return sql ? sql->RoundTrips() : 0;
}

const QString& TQXViewDriver::RepositoryNotice() const {
    return FParts->Notice;
}
