#include "tests/domain/joinoptions.h"
#include "tests/support/commandlines.h"
#include "tests/support/files.h"

#include "browser/cnbrowser.h"

#include <QDir>
#include <QThreadPool>
#include <QUuid>

namespace {

// Random, so that nothing else on the machine has it.
const QString sentinel = "S3ntinel." + QUuid::createUuid().toString(QUuid::Id128);
const QString rightPassword = sentinel + "Right";
const QString wrongPassword = sentinel + "Wrong";

// The names of all files in the folders where tools keep tickets, settings and the like while they
// run. What is mounted below these folders is not the practice Mac's own.
QStringList temporaryFiles()
{
    return PracticeMac::sortedLines(PracticeMac::run(
        "/usr/bin/find", {"/tmp", "/run/session", QDir::homePath(), "/var/tmp", "-xdev"}));
}

// Where the practice Mac's own file systems are mounted: all that can be written, but for the
// host's, such as /dev and the cache below /run.
QStringList fileSystems()
{
    return PracticeMac::sortedLines(
        PracticeMac::run("/usr/bin/findmnt", {"-lno", "TARGET", "-S", "practice-mac"}));
}

// The files with the text that were written on this Mac since the stamp, the logs and the
// domain's own database included.
QStringList writtenSince(const QString& stamp, const QString& text)
{
    const QString script = "stamp=$1 text=$2; shift 2\n"
                           "find \"$@\" -xdev -type f -newer \"$stamp\" -print0 |\n"
                           "xargs -0 -r grep -laF -e \"$text\" || true";
    return PracticeMac::sortedLines(PracticeMac::run(
        "/bin/bash", QStringList{"-c", script, "find", stamp, text} + fileSystems()));
}

// Writes the text to a file in each of the file systems. Returns their names, sorted.
QStringList writeEverywhere(const QString& text)
{
    QStringList names;
    for (const QString& folder : fileSystems()) {
        names << QDir(folder).filePath("control");
        writeFile(names.last(), text.toUtf8());
    }
    names.sort();
    return names;
}

} // namespace

// A password that is used for nothing else is looked for on command lines, in environments and
// below /tmp while the practice Mac's tools and the bundle's scripts run, and afterwards in all
// files of its own, with success and with failure.
class TestSentinel : public DomainTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        DomainTest::initTestCase();
        PracticeMac::run("/usr/bin/samba-tool",
                         {"user", "setpassword", PracticeMac::administrator,
                          "--newpassword=" + rightPassword,
                          "--configfile=/var/lib/practice-domain/etc/smb.conf"});
    }

    void passwordStaysWhereItHasTo()
    {
        PracticeMac::run("/usr/sbin/dsconfigad",
                         {"-add", PracticeMac::domain, "-computer", "sentinel-mac0", "-username",
                          PracticeMac::administrator, "-password", rightPassword});
        PracticeMac::run("/usr/bin/touch", {"/var/stamp"});
        const QStringList filesBefore = temporaryFiles();
        const QList<int> descriptorsBefore = openDescriptors();

        CommandLineWatch watch(sentinel.toUtf8());
        unbindAndJoin();
        leave();
        const QStringList seen = watch.end();

        // A tool, and which of its words is the password. The watch may miss a tool that ends at
        // once; those that it has to see take a while.
        const QStringList places = {
            "check_domain_cred.tcl 3", "dsconfigad 6", "gui_helper_tool 5", "mvedit 4",
            "mvedit_file_arg.tcl 3",   "mvjoin 4",     "mvleave 4",         "sh 2"};
        for (const QString& place : seen)
            QVERIFY2(places.contains(place), qPrintable(place));
        for (const char* place :
             {"check_domain_cred.tcl 3", "dsconfigad 6", "mvjoin 4", "mvleave 4"})
            QVERIFY2(seen.contains(place), place);
        // The message that the binding is removed, and four refusals.
        QCOMPARE(said.size(), 5);
        QVERIFY(!said.join(' ').contains(sentinel));
        QCOMPARE(temporaryFiles(), filesBefore);
        // Just the files that are written now are found, and each of them.
        QVERIFY(fileSystems().contains("/") && fileSystems().contains(QDir::homePath()));
        const QStringList controls = writeEverywhere(sentinel);
        QCOMPARE(writtenSince("/var/stamp", sentinel), controls);
        QThreadPool::globalInstance()->waitForDone(); // its threads hold descriptors as well
        QCOMPARE(openDescriptors(), descriptorsBefore);
    }

private:
    // Each page refuses the wrong password first; the join fails once in its tool, too.
    void unbindAndJoin()
    {
        WizardDriver wizard;
        wizard.next();
        enter(&wizard, wrongPassword, 2);
        enter(&wizard, rightPassword, 3);
        enter(&wizard, wrongPassword, 3);
        enter(&wizard, rightPassword, 4);

        wizard.click("AdvancedButton");
        browse(&wizard)->close();
        wizard.click("ZoneButton");
        wizard.type("ZoneEdit", "NoZone");
        wizard.type("ComputerNameEdit", "sentinel-mac");
        goOn(&wizard, 4);
        wizard.click("AutoButton");
        goOn(&wizard, 7);
    }

    void leave()
    {
        WizardDriver wizard;
        wizard.next();
        enter(&wizard, wrongPassword, 6);
        enter(&wizard, rightPassword, 7);
    }

    void enter(WizardDriver* wizard, const QString& password, int nextPage)
    {
        wizard->enterUser(PracticeMac::administrator, password);
        goOn(wizard, nextPage);
    }

    void goOn(WizardDriver* wizard, int nextPage)
    {
        said += wizard->next();
        QCOMPARE(wizard->page(), nextPage);
    }

    QStringList said; // by the pages
};

DOMAIN_TEST_MAIN(TestSentinel)
#include "tst_sentinel.moc"
