#include "practice/prompt/authorizationprompt.h"
#include "tests/domain/practicemac.h"
#include "tests/support/xsession.h"

#include <QDialogButtonBox>
#include <QPushButton>

namespace {

class Prompt : public AuthorizationPrompt
{
public:
    Prompt() : AuthorizationPrompt("/usr/sbin/dsconfigad")
    {
        show();
    }

    void answer(const QString& user, const QString& secret)
    {
        const QList<QLineEdit*> edits = findChildren<QLineEdit*>();
        edits.at(0)->setText(user);
        edits.at(1)->setText(secret);
        QTest::mouseClick(findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok),
                          Qt::LeftButton);
    }
};

} // namespace

// The practice Mac's own prompt, with the accounts of the practice Mac.
class TestPrompt : public DomainTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        DomainTest::initTestCase();
        PracticeMac::run("/bin/sh", {"-c", "id guest || useradd --no-create-home guest\n"
                                           "echo guest:practice | chpasswd"});
    }

    void saysWhoAsks()
    {
        const Prompt prompt;
        const QStringList texts = visibleTexts(&prompt);
        QVERIFY(texts.contains("Morvanta Join Assistant wants to make changes."));
        QVERIFY(texts.filter("dsconfigad").size() == 1);
        QVERIFY(texts.contains("User Name:"));
        QVERIFY(texts.contains("Password:"));
        QCOMPARE(prompt.findChildren<QLineEdit*>().at(1)->echoMode(), QLineEdit::Password);
    }

    void refusesWhoIsNoAdministrator_data()
    {
        addColumns<QString, QString>("user", "secret");

        addRow("wrong password", "macadmin", "Practice");
        addRow("no password", "macadmin", "");
        addRow("no such user", "nobody-here", "practice");
        addRow("an account without rights", "guest", "practice");
        addRow("no name", "", "");
    }

    void refusesWhoIsNoAdministrator()
    {
        QFETCH(QString, user);
        QFETCH(QString, secret);
        Prompt prompt;
        prompt.answer(user, secret);
        QVERIFY(prompt.isVisible());
        QVERIFY(!prompt.denied());
        QVERIFY(visibleTexts(&prompt).contains("This name and password are not right."));
        QCOMPARE(prompt.findChildren<QLineEdit*>().at(1)->text(), QString());
    }

    void itsProgramTellsTheAnswerByItsStatus_data()
    {
        addColumns<QStringList, int>("keys", "status");
        const QStringList right{"p", "r", "a", "c", "t", "i", "c", "e", "Return"};
        addRow("accepted", right, 0);
        addRow("cancelled by its button, after two wrong answers",
               QStringList{"Return", "Return", "Tab", "space"}, 1);
        addRow("denied by the third wrong answer", QStringList{"Return", "Return", "Return"}, 2);
    }

    // The prompt opens with the keyboard focus in its password.
    void itsProgramTellsTheAnswerByItsStatus()
    {
        QFETCH(QStringList, keys);
        QVERIFY(QDir().mkpath(World::home()));
        const XSession session;
        QProcess program;
        program.setProcessEnvironment(session.environment());
        program.start(PROMPT, {"/usr/sbin/dsconfigad"});
        const QString window = session.waitForWindow("Authorization");
        for (const QString& key : keys)
            QVERIFY(session.pressIn(window, key));
        QVERIFY(program.waitForFinished());
        QTEST(program.exitCode(), "status");
    }
};

DOMAIN_TEST_MAIN(TestPrompt)
#include "tst_prompt.moc"
