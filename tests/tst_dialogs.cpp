#include "tests/support/worldtest.h"
#include "ui_loadcn.h"
#include "ui_loadjoin.h"
#include "ui_loadleave.h"
#include "ui_warning.h"

#include "pages/dialogs/loadcn.h"
#include "pages/dialogs/loadjoin.h"
#include "pages/dialogs/loadleave.h"
#include "pages/dialogs/warning.h"

#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>

#include <memory>

namespace {

const QStringList progressDialogs{"LoadJoin", "LoadCN", "LoadLeave"};

std::unique_ptr<QDialog> makeDialog(const QString& name)
{
    if (name == "LoadJoin")
        return std::make_unique<LoadJoin>();
    if (name == "LoadCN")
        return std::make_unique<LoadCN>();
    if (name == "LoadLeave")
        return std::make_unique<LoadLeave>();
    return std::make_unique<Warning>();
}

// The title that the form alone gives.
template <typename Form> QString formTitle()
{
    QDialog dialog;
    Form form;
    form.setupUi(&dialog);
    return dialog.windowTitle();
}

} // namespace

class TestDialogs : public WorldTest
{
    Q_OBJECT

private slots:
    void progressDialogsHaveTheirTexts_data()
    {
        addColumns<QString, QString>("title", "text");
        addRow("LoadJoin", "Joining",
               "Joining your Mac to your domain, this may take some time...");
        addRow("LoadCN", "Loading", "Loading CN from your domain, this may take some time...");
        addRow("LoadLeave", "Leaving",
               "Leaving your Mac from your domain, this may take some time...");
    }

    void progressDialogsHaveTheirTexts()
    {
        const std::unique_ptr<QDialog> dialog = makeDialog(QTest::currentDataTag());
        QCOMPARE(dialog->objectName(), QString(QTest::currentDataTag()));
        QTEST(dialog->windowTitle(), "title");
        QTEST(child<QLabel>(dialog.get(), "label")->text(), "text");
    }

    void progressIsFixedAt440By220AndAWarningAt500By300()
    {
        for (const QString& name : progressDialogs + QStringList{"Warning"}) {
            const QSize size = name == "Warning" ? QSize(500, 300) : QSize(440, 220);
            const std::unique_ptr<QDialog> dialog = makeDialog(name);
            QCOMPARE(dialog->minimumSize(), size);
            QCOMPARE(dialog->maximumSize(), size);
        }
    }

    void progressDialogsBlockAllOtherInput()
    {
        for (const QString& name : progressDialogs) {
            QPushButton other;
            other.show();
            bool clicked = false;
            connect(&other, &QPushButton::clicked, [&clicked] { clicked = true; });
            const std::unique_ptr<QDialog> dialog = makeDialog(name);
            dialog->show();
            QCOMPARE(dialog->windowModality(), Qt::ApplicationModal);
            QVERIFY(QTest::qWaitForWindowExposed(dialog.get()));
            QTest::mouseClick(other.windowHandle(), Qt::LeftButton);
            QVERIFY(!clicked);
            dialog->hide();
            QTest::mouseClick(other.windowHandle(), Qt::LeftButton);
            QVERIFY(clicked);
        }
    }

    void progressBarsStandAt99Of100()
    {
        for (const QString& name : progressDialogs) {
            const std::unique_ptr<QDialog> dialog = makeDialog(name);
            const auto* bar = child<QProgressBar>(dialog.get(), "progressBar");
            QCOMPARE(bar->minimum(), 0);
            QCOMPARE(bar->maximum(), 100);
            QCOMPARE(bar->value(), 99);
        }
    }

    void formsHaveTitlesOfTheirOwn()
    {
        QCOMPARE(formTitle<Ui_LoadJoin>(), QString("Joining"));
        QCOMPARE(formTitle<Ui_LoadCN>(), QString("Joining"));
        QCOMPARE(formTitle<Ui_LoadLeave>(), QString("Dialog"));
        QCOMPARE(formTitle<Ui_Warning>(), QString("Dialog"));
    }

    void settersActAtOnce()
    {
        for (const QString& name : progressDialogs) {
            const std::unique_ptr<QDialog> dialog = makeDialog(name);
            auto* progress = qobject_cast<ProgressDialog*>(dialog.get());
            progress->setLabel("a label");
            progress->setTitle("a title");
            progress->setProgressBar(7);
            QCOMPARE(child<QLabel>(progress, "label")->text(), QString("a label"));
            QCOMPARE(progress->windowTitle(), QString("a title"));
            QCOMPARE(child<QProgressBar>(progress, "progressBar")->value(), 7);
        }
        LoadLeave leave;
        leave.setCurrText("a text");
        leave.setCurrTitle("a title");
        QCOMPARE(child<QLabel>(&leave, "label")->text(), QString("a text"));
        QCOMPARE(leave.windowTitle(), QString("a title"));
        Warning warning;
        warning.setWarning("first\nsecond");
        warning.setTitle("a title");
        QCOMPARE(child<QTextBrowser>(&warning, "WarningLabel")->toPlainText(),
                 QString("first\nsecond"));
        QCOMPARE(warning.windowTitle(), QString("a title"));
    }

    void onlyTheLoadingProgressCanBeClosed()
    {
        for (const QString& name : progressDialogs) {
            const std::unique_ptr<QDialog> dialog = makeDialog(name);
            dialog->show();
            QTest::keyClick(dialog.get(), Qt::Key_Escape);
            QCOMPARE(dialog->isVisible(), name != "LoadCN");
            dialog->show();
            QSignalSpy rejected(dialog.get(), &QDialog::rejected);
            dialog->close();
            QCOMPARE(dialog->isVisible(), name != "LoadCN");
            QCOMPARE(rejected.size(), name == "LoadCN" ? 1 : 0);
            dialog->reject();
            QVERIFY(!dialog->isVisible());
        }
    }

    void warningHasAReadOnlyTextOneButtonAndNoModalityOfItsOwn()
    {
        const Warning dialog;
        QCOMPARE(dialog.windowModality(), Qt::NonModal);
        QVERIFY(child<QTextBrowser>(&dialog, "WarningLabel")->isReadOnly());
        const auto* box = child<QDialogButtonBox>(&dialog, "buttonBox");
        QCOMPARE(box->orientation(), Qt::Horizontal);
        QCOMPARE(box->standardButtons(), QDialogButtonBox::StandardButtons(QDialogButtonBox::Ok));
    }

    void longWarningScrolls()
    {
        Warning dialog;
        dialog.setWarning(QString("a line of the message\n").repeated(500));
        dialog.show();
        const auto* text = child<QTextBrowser>(&dialog, "WarningLabel");
        QTRY_VERIFY(text->verticalScrollBar()->isVisible());
        QVERIFY(text->verticalScrollBar()->maximum() > 0);
        QCOMPARE(dialog.size(), QSize(500, 300));
    }

    void okClosesAWarning()
    {
        Warning dialog;
        withModalDialogs([&dialog] { dialog.exec(); },
                         [](QWidget* shown) {
                             auto* box = child<QDialogButtonBox>(shown, "buttonBox");
                             box->button(QDialogButtonBox::Ok)->click();
                         });
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
    }

    // What had been pressed before the message came up must not close it unread; once that has
    // been handled, a press counts.
    void warningIsNotClosedBeforeItIsUp()
    {
        Warning dialog;
        dialog.show();
        dialog.accept();
        dialog.reject();
        dialog.close();
        QVERIFY(dialog.isVisible());
        QTRY_VERIFY((dialog.accept(), !dialog.isVisible()));
    }
};

WORLD_TEST_MAIN(TestDialogs)
#include "tst_dialogs.moc"
