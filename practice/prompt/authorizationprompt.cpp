#include "practice/prompt/authorizationprompt.h"
#include "practice/prompt/localadministrator.h"

#include <QAbstractButton>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QVBoxLayout>

namespace {

constexpr int answersAllowed = 3;

// A padlock of 64 points, sharp on dense screens.
QPixmap padlock()
{
    QPixmap picture(QStringLiteral(":/lock.png"));
    picture.setDevicePixelRatio(2);
    return picture;
}

QLabel* textLabel(const QString& text)
{
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

} // namespace

AuthorizationPrompt::AuthorizationPrompt(const QString& tool, QWidget* parent)
    : QDialog(parent), name(new QLineEdit("macadmin")), password(new QLineEdit),
      complaint(textLabel({}))
{
    // The resource lies in a static library, from which the linker takes only what is named.
    Q_INIT_RESOURCE(prompt);
    setWindowTitle(tr("Authorization"));

    auto* icon = new QLabel;
    icon->setPixmap(padlock());
    auto* request = textLabel(tr("Morvanta Join Assistant wants to make changes."));
    QFont bold = request->font();
    bold.setBold(true);
    request->setFont(bold);
    auto* explanation =
        textLabel(tr("Enter the name and password of an administrator of this Mac to allow this.\n"
                     "Tool: %1")
                      .arg(QFileInfo(tool).fileName()));
    explanation->setToolTip(tool);

    password->setEchoMode(QLineEdit::Password);
    auto* answers = new QFormLayout;
    answers->addRow(tr("User Name:"), name);
    answers->addRow(tr("Password:"), password);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    // The Mac's order, Cancel before OK, and no icons.
    buttons->setStyleSheet("* { button-layout: 1; }");
    for (QAbstractButton* button : buttons->buttons())
        button->setIcon({});
    connect(buttons, &QDialogButtonBox::accepted, this, &AuthorizationPrompt::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &AuthorizationPrompt::reject);

    auto* text = new QVBoxLayout;
    text->addWidget(request);
    text->addWidget(explanation);
    text->addLayout(answers);
    text->addWidget(complaint);
    text->addStretch();
    text->addWidget(buttons);
    auto* columns = new QHBoxLayout(this);
    columns->setContentsMargins(20, 20, 20, 20);
    columns->setSpacing(20);
    columns->addWidget(icon, 0, Qt::AlignTop);
    columns->addLayout(text);

    setFixedSize(480, 310);
    password->setFocus();
}

bool AuthorizationPrompt::denied() const
{
    return wrongAnswers >= answersAllowed;
}

void AuthorizationPrompt::accept()
{
    if (isLocalAdministrator(name->text(), password->text())) {
        QDialog::accept();
        return;
    }
    ++wrongAnswers;
    complaint->setText(tr("This name and password are not right."));
    password->clear();
    password->setFocus();
    if (denied())
        reject();
}
