// The join's argument vector for any state of the page and any texts.

#include "pages/jointype.h"
#include "pages/userpassentry.h"
#include "tests/robustness/fuzz/runner.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <QCheckBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QWizard>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static QWizard* wizard = nullptr;
    if (wizard == nullptr) {
        wizard = new QWizard;
        wizard->setPage(3, new UserPassEntry);
        wizard->setPage(4, new JoinType);
    }
    FuzzedDataProvider input(data, size);
    const auto edit = [](const char* name) { return wizard->findChild<QLineEdit*>(name); };
    const auto text = [&](const char* name) {
        edit(name)->setText(QString::fromStdString(input.ConsumeRandomLengthString(600)));
        // The C string that a tool gets ends at a NUL.
        return QByteArray(edit(name)->text().toLocal8Bit().constData());
    };
    const auto box = [&input](const char* name) {
        auto* button = wizard->findChild<QAbstractButton*>(name);
        button->setChecked(input.ConsumeBool());
        return button->isChecked();
    };
    // These four act on one another: all are shuffled before one is read.
    for (const char* name : {"AdvancedButton", "ZoneButton", "AppleUIDCheck", "AutoButton"})
        box(name);
    const bool automatic = wizard->findChild<QRadioButton*>("AutoButton")->isChecked();
    const auto* scheme = wizard->findChild<QCheckBox*>("AppleUIDCheck");

    const QByteArray user = text("UsernameEdit");
    const QByteArray password = text("PasswordEdit");
    const QByteArray domain = text("DomainEdit");
    QList<QByteArray> expected = {"/usr/local/sbin/mvjoin", "-u", user, "-p", password, domain};
    if (box("ForceLeave"))
        expected << "-f";
    const QByteArray zone = text("ZoneEdit");
    if (automatic)
        expected << "-w";
    else
        expected << "-z" << zone;
    if (automatic && scheme->isChecked())
        expected << "-e";
    const struct {
        const char* box;
        const char* edit;
        const char* option;
    } rows[] = {{"ContainerDNLabel", "ContainerDNEdit", "-c"},
                {"PDSLabel", "PDSEdit", "-s"},
                {"AliasLabel", "AliasEdit", "-a"}};
    for (const auto& row : rows) {
        const QByteArray value = text(row.edit);
        if (box(row.box))
            expected << row.option << value;
    }
    text("ComputerNameEdit");
    if (!edit("ComputerNameEdit")->text().isEmpty())
        expected << "-n" << edit("ComputerNameEdit")->text().toLocal8Bit().constData();

    Fuzz::Runner& runner = Fuzz::Runner::installed();
    Fuzz::check(wizard->page(4)->validatePage(), "the join is a success");
    QList<QByteArray> arguments;
    // After a success the program keeps the arguments; here they would add up to all memory.
    for (char** argument = runner.arguments; *argument != nullptr; ++argument) {
        arguments << *argument;
        delete[] * argument;
    }
    delete[] runner.arguments;
    Fuzz::check(arguments == expected, "the arguments are the reference's");
    return 0;
}
