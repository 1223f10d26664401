#include "practice/prompt/authorizationprompt.h"
#include "tests/domain/practicemac.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>

// The practice Mac's own prompt, with the accounts of the practice Mac.
class TestPrompt : public DomainTest
{
    Q_OBJECT

private slots:
    void saysWhoAsks();
    void acceptsAnAdministrator();
    void refusesWhoIsNoAdministrator_data();
    void refusesWhoIsNoAdministrator();
    void isDeniedAfterThreeWrongAnswers();
    void cancelIsNoDenial();
};

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
        press(QDialogButtonBox::Ok);
    }

    void press(QDialogButtonBox::StandardButton button)
    {
        QTest::mouseClick(findChild<QDialogButtonBox*>()->button(button), Qt::LeftButton);
    }
};

} // namespace

void TestPrompt::saysWhoAsks()
{
    const Prompt prompt;
    const QStringList texts = visibleTexts(&prompt);
    QVERIFY(texts.contains("Morvanta Join Assistant wants to make changes."));
    QVERIFY(texts.filter("dsconfigad").size() == 1);
    QCOMPARE(prompt.findChildren<QLineEdit*>().at(1)->echoMode(), QLineEdit::Password);
}

void TestPrompt::acceptsAnAdministrator()
{
    Prompt prompt;
    prompt.answer("macadmin", "practice");
    QCOMPARE(prompt.result(), int(QDialog::Accepted));
    QVERIFY(!prompt.isVisible());
}

void TestPrompt::refusesWhoIsNoAdministrator_data()
{
    QTest::addColumn<QString>("user");
    QTest::addColumn<QString>("secret");

    QTest::newRow("wrong password") << "macadmin"
                                    << "Practice";
    QTest::newRow("no password") << "macadmin"
                                 << "";
    QTest::newRow("no such user") << "nobody-here"
                                  << "practice";
    QTest::newRow("an account without rights") << "daemon"
                                               << "";
    QTest::newRow("no name") << ""
                             << "";
}

void TestPrompt::refusesWhoIsNoAdministrator()
{
    QFETCH(QString, user);
    QFETCH(QString, secret);
    Prompt prompt;
    prompt.answer(user, secret);
    QVERIFY(prompt.isVisible());
    QVERIFY(!prompt.denied());
    QVERIFY(visibleTexts(&prompt).contains("This name and password are not right."));
}

void TestPrompt::isDeniedAfterThreeWrongAnswers()
{
    Prompt prompt;
    for (int answer = 0; answer < 3; ++answer) {
        QVERIFY(prompt.isVisible());
        prompt.answer("macadmin", "wrong");
    }
    QVERIFY(!prompt.isVisible());
    QCOMPARE(prompt.result(), int(QDialog::Rejected));
    QVERIFY(prompt.denied());
}

void TestPrompt::cancelIsNoDenial()
{
    Prompt prompt;
    prompt.answer("macadmin", "wrong");
    prompt.press(QDialogButtonBox::Cancel);
    QVERIFY(!prompt.isVisible());
    QCOMPARE(prompt.result(), int(QDialog::Rejected));
    QVERIFY(!prompt.denied());
}

DOMAIN_TEST_MAIN(TestPrompt)
#include "tst_prompt.moc"
