#include "pages/dialogs/warning.h"
#include "ui_warning.h"

#include "widgets/presentation.h"
#include "widgets/queuedinput.h"

#include <QPixmap>
#include <QPushButton>
#include <QTextDocument>

namespace {

// What a tool prints may look like rich text, and is then shown as such, but the images and other
// files that it names are neither fetched nor opened. Each image is replaced by an empty one: for
// one that is missing Qt would open a file of its name.
class MessageDocument : public QTextDocument
{
public:
    using QTextDocument::QTextDocument;

protected:
    QVariant loadResource(int type, const QUrl&) override
    {
        if (type != ImageResource)
            return {};
        QPixmap empty(1, 1);
        empty.fill(Qt::transparent);
        return empty;
    }
};

} // namespace

Warning::Warning(QWidget* parent) : QDialog(parent), ui(new Ui_Warning)
{
    ui->setupUi(this);
    ui->WarningLabel->setDocument(new MessageDocument(ui->WarningLabel));
    ui->WarningLabel->document()->setDocumentMargin(10);
    setWindowTitle(tr("WARNING"));
    // A desktop theme's icon on the one button would only distract from the message.
    ui->buttonBox->button(QDialogButtonBox::Ok)->setIcon(QIcon());
    // The message has the focus, not the button, so that screen readers read it and the arrow keys
    // scroll it. Return still presses the button.
    ui->WarningLabel->setFocus();
    // No links: with them, Return would not press the button while text is selected, as the message
    // takes it for the opening of a link.
    ui->WarningLabel->setTextInteractionFlags(Qt::TextSelectableByMouse);
}

Warning::~Warning()
{
    delete ui;
}

void Warning::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    presentDialog(this, ui->WarningLabel->toPlainText());
    afterQueuedInput(this, [this] { canClose = true; });
}

void Warning::done(int result)
{
    if (canClose)
        QDialog::done(result);
}

void Warning::setWarning(QString text)
{
    // Looking for the ends of words takes minutes in a line of a million characters, which a tool
    // gone wrong may print. A long text is broken anywhere, whatever its lines.
    constexpr int longestWrappedAtWords = 10000;
    if (text.size() > longestWrappedAtWords)
        ui->WarningLabel->setWordWrapMode(QTextOption::WrapAnywhere);
    ui->WarningLabel->setText(text);
}

void Warning::setTitle(QString title)
{
    setWindowTitle(title);
}

void showWarning(const QString& text)
{
    Warning warning;
    warning.setWarning(text);
    warning.exec();
}
