#include <QtTest>
class TestTreeCommands : public QObject {
    Q_OBJECT
};
QTEST_MAIN(TestTreeCommands)
#include "tst_TreeCommands.moc"
