#include "pages/dialogs/warning.h"
#include "ui_warning.h"

Warning::Warning(QWidget* parent) : QDialog(parent), ui(new Ui::Warning)
{
    ui->setupUi(this);
    setWindowTitle(tr("WARNING"));
}

Warning::~Warning()
{
    delete ui;
}

void Warning::setWarning(QString text)
{
    // Looking for the ends of words takes minutes in a line of a million characters, and a tool
    // gone wrong may print one.
    constexpr int longestMessage = 10000;
    if (text.size() > longestMessage)
        ui->WarningLabel->setWordWrapMode(QTextOption::WrapAnywhere);
    ui->WarningLabel->setText(text);
}

void Warning::setTitle(QString title)
{
    setWindowTitle(title);
}

void showWarning(const QString& text)
{
    auto* warning = new Warning;
    warning->setWarning(text);
    warning->exec();
    delete warning;
}
