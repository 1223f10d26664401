#include "pages/jointype.h"
#include "ui_jointype.h"

#include "browser/cnbrowser.h"
#include "pages/dialogs/loadcn.h"
#include "pages/dialogs/loadjoin.h"
#include "pages/dialogs/warning.h"
#include "pages/helpertool.h"
#include "pages/joinflags.h"
#include "pages/pageids.h"
#include "system/commandrunner.h"
#include "system/probes.h"
#include "system/toolpaths.h"
#include "widgets/presentation.h"
#include "widgets/shortcut.h"

#include <QLayoutItem>

namespace {

// Takes as much room in a layout as a widget of another layout, which it doesn't move. Two layouts
// that lie one on the other have the same rows and columns when each has struts for the other's
// widgets. The widget must outlive the layout.
class Strut : public QWidgetItem
{
public:
    using QWidgetItem::QWidgetItem;

    void setGeometry(const QRect&) override {}
    bool isEmpty() const override
    {
        return false;
    }
};

} // namespace

JoinType::JoinType(QWidget* parent) : QWizardPage(parent), ui(new Ui_JoinType)
{
    ui->setupUi(this);
    alignChoicesWithDescriptions();
    addShortcutsAndDescriptions();
    strengthenPlaceholder();
    setButtonText(QWizard::NextButton, tr("Join"));
    on_AdvancedButton_toggled(false);
    registerField(QStringLiteral("DomainContainerDN"), ui->ContainerDNEdit);
    // The local host name up to its first full stop. A name with a blank is left out, since no
    // computer account may have one.
    const QString host = QString::fromStdString(getReturnValue(Tools::hostNameCommand)).trimmed();
    const QString name = host.section(QLatin1Char('.'), 0, 0);
    ui->ComputerNameEdit->setText(name.contains(QLatin1Char(' ')) ? QString() : name);
    if (isEnrolled())
        ui->CloudCheck->setEnabled(false);
    loadCN = new LoadCN;
    connect(loadCN, &QDialog::rejected, this, &JoinType::giveUpLoading);
}

JoinType::~JoinType()
{
    delete browser;
    browser = nullptr;
    delete ui;
    delete loadCN;
}

// The buttons belong to the page, the labels beside them to the frame; the struts keep the two
// layouts aligned.
void JoinType::alignChoicesWithDescriptions()
{
    const int edge = ui->frame->frameWidth();
    ui->choiceLayout->setContentsMargins(ui->descriptionLayout->contentsMargins() +
                                         QMargins(edge, edge, edge, edge));
    ui->descriptionLayout->addItem(new Strut(ui->AutoButton), 0, 0);
    ui->descriptionLayout->addItem(new Strut(ui->ZoneButton), 1, 0);
    ui->descriptionLayout->addItem(new Strut(ui->ZoneEdit), 2, 1);
    ui->choiceLayout->addItem(new Strut(ui->label_2), 0, 1);
    ui->choiceLayout->addItem(new Strut(ui->label_4), 1, 1);
}

// The buttons that take no focus get shortcuts, shown in their tool tips; screen readers read each
// choice out with the label beside it.
void JoinType::addShortcutsAndDescriptions()
{
    setShortcut(ui->AdvancedButton, Qt::CTRL | Qt::SHIFT | Qt::Key_A);
    setShortcut(ui->ForceLeave, Qt::CTRL | Qt::SHIFT | Qt::Key_O);
    setShortcut(ui->ContainerDNLabel, Qt::CTRL | Qt::SHIFT | Qt::Key_C);
    setShortcut(ui->PDSLabel, Qt::CTRL | Qt::SHIFT | Qt::Key_P);
    setShortcut(ui->AliasLabel, Qt::CTRL | Qt::SHIFT | Qt::Key_L);
    ui->AutoButton->setAccessibleDescription(ui->label_2->text());
    ui->ZoneButton->setAccessibleDescription(ui->label_4->text());
}

// The contrast of Qt's own placeholder is too low to be read easily.
void JoinType::strengthenPlaceholder()
{
    QColor color = palette().color(QPalette::Text);
    color.setAlphaF(0.7);
    QPalette change;
    change.setColor(QPalette::PlaceholderText, color);
    ui->ZoneEdit->setPalette(change);
}

void JoinType::changeEvent(QEvent* event)
{
    QWizardPage::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        strengthenPlaceholder();
}

void JoinType::initializePage()
{
    ui->CloudCheck->hide(); // though validatePage() reads it
}

void JoinType::cleanupPage() {}

int JoinType::nextId() const
{
    return PageId::Conclusion;
}

void JoinType::on_AutoButton_toggled(bool checked)
{
    ui->AppleUIDCheck->setEnabled(checked);
    if (!checked)
        ui->AppleUIDCheck->setChecked(false);
}

void JoinType::on_AdvancedButton_toggled(bool checked)
{
    const QWidgetList advanced{ui->AliasEdit,        ui->AliasLabel,        ui->ContainerDNEdit,
                               ui->ContainerDNLabel, ui->ContainerDNBrowse, ui->PDSEdit,
                               ui->PDSLabel,         ui->ForceLeave,        ui->AppleUIDCheck};
    for (QWidget* widget : advanced)
        widget->setVisible(checked);
    // Opening resets the Apple UID scheme and nothing else, closing resets nothing: options that
    // are hidden still count for the join.
    if (checked) {
        ui->AppleUIDCheck->setChecked(false);
        if (ui->AutoButton->isChecked())
            ui->AppleUIDCheck->setEnabled(true);
    }
}

void JoinType::on_ContainerDNBrowse_clicked()
{
    if (isUnderDialog())
        return;
    const QString user = field(QStringLiteral("DomainUsername")).toString();
    const QString password = field(QStringLiteral("DomainPassword")).toString();
    const QString domain = field(QStringLiteral("DomainName")).toString();
    if (user.isEmpty() || password.isEmpty() || domain.isEmpty()) {
        refuseBrowsing();
        return;
    }
    loadCN->show();
    if (browser == nullptr) {
        browser = new cnbrowser(this);
        connect(browser, &cnbrowser::browseChooseButtonClicked, this,
                &JoinType::containerDNBrowseChose);
        connect(browser, &cnbrowser::treeDrawingDone, this, &JoinType::checkTreeDrawingStatus);
    }
    browser->setDomainInfo(domain, user, password);
    browser->createTree();
}

// The user has closed "Loading" and goes on without the tree. Its script ends, so that a failure
// can't empty the container that is typed meanwhile.
void JoinType::giveUpLoading()
{
    if (browser != nullptr)
        browser->clearData();
}

void JoinType::checkTreeDrawingStatus(CNBROWSER_ERROR status)
{
    loadCN->hide();
    if (status != CNBROWSER_SUCCESS) {
        // One text for every failure: what the user can check is the same.
        refuseBrowsing();
        return;
    }
    if (browser != nullptr) {
        browser->show();
        browser->raise();
        browser->activateWindow();
    }
}

void JoinType::refuseBrowsing()
{
    ui->ContainerDNEdit->clear();
    ui->ContainerDNLabel->setChecked(false);
    showWarning(
        tr("Browse require domain name, domain administrator name and password, please make "
           "sure they are inputted correctly in the previous page!"));
}

void JoinType::containerDNBrowseChose(QString distinguishedName)
{
    ui->ContainerDNEdit->clear();
    ui->ContainerDNEdit->insert(distinguishedName);
    ui->ContainerDNLabel->setChecked(!distinguishedName.isEmpty());
    ui->ContainerDNEdit->setFocus(Qt::OtherFocusReason);
}

// The join tool takes the domain without an option, right after name and password. What is checked
// (ContainerDNLabel, PDSLabel and AliasLabel are check boxes) decides which options are passed,
// also while it is hidden and where its value is empty: the join tool refuses what it can't use.
// Only an empty computer name is left out.
QStringList JoinType::joinArguments() const
{
    QStringList arguments{QLatin1String(Tools::join),
                          QStringLiteral("-u"),
                          field(QStringLiteral("DomainUsername")).toString(),
                          QStringLiteral("-p"),
                          field(QStringLiteral("DomainPassword")).toString(),
                          field(QStringLiteral("DomainName")).toString()};
    if (ui->ForceLeave->isChecked())
        arguments << QStringLiteral("-f");
    if (ui->AutoButton->isChecked()) {
        arguments << QStringLiteral("-w");
        if (ui->AppleUIDCheck->isEnabled() && ui->AppleUIDCheck->isChecked())
            arguments << QStringLiteral("-e");
    } else if (ui->ZoneButton->isChecked()) {
        arguments << QStringLiteral("-z") << ui->ZoneEdit->text();
    }
    if (ui->ContainerDNLabel->isChecked())
        arguments << QStringLiteral("-c") << ui->ContainerDNEdit->text();
    if (ui->PDSLabel->isChecked())
        arguments << QStringLiteral("-s") << ui->PDSEdit->text();
    if (ui->AliasLabel->isChecked())
        arguments << QStringLiteral("-a") << ui->AliasEdit->text();
    if (!ui->ComputerNameEdit->text().isEmpty())
        arguments << QStringLiteral("-n") << ui->ComputerNameEdit->text();
    return arguments;
}

bool JoinType::validatePage()
{
    joining = true; // stays, also when the join fails
    char** arguments = convertQSLtoArray(joinArguments());
    const int status =
        runBehind(new LoadJoin, this, &JoinType::runMVJoin, &JoinType::finishedMVJoin, arguments);
    if (status == 0) {
        if (ui->CloudCheck->isChecked())
            enrolling = true;
        return true;
    }
    // Where no tool was started this is the text of the run before, or an empty one.
    showWarning(joinOutput);
    delete[] arguments; // here alone, and its strings nowhere (docs/known-behaviour.md)
    return false;
}

int JoinType::runMVJoin(char** args)
{
    const int status = runHelperTool(args, &joinOutput);
    emit finishedMVJoin();
    return status;
}
