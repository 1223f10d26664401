#include <QDir>
#include <QMap>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <unistd.h>

// How a practice Mac starts, up to the command that runs on it, and the domain's directory, which
// the first start prepares and keeps in the user's cache.
class TestPreparation : public QObject
{
    Q_OBJECT

private slots:
    void directoryIsPreparedOnceAndReplacesFormerOnes()
    {
        if (geteuid() != 0)
            QSKIP("Only root could delete what is prepared");
        const QTemporaryDir home;
        QDir cache(home.filePath(".cache/morvanta-join-assistant"));
        const QString former = "domain-0123456789abcdef";
        QVERIFY(cache.mkpath(former));
        const Variables atHome{{"HOME", home.path()}, {"XDG_CACHE_HOME", ""}};
        QCOMPARE(startMac(PRACTICE, {}, atHome), preparing + "runs\n");
        QCOMPARE(cache.entryList({"domain-*"}, QDir::Dirs).size(), 1);
        QVERIFY(!cache.exists(former));
        QCOMPARE(startMac(PRACTICE, {}, atHome), QByteArray("runs\n"));
        const Variables elsewhere{{"HOME", home.filePath("other")},
                                  {"XDG_CACHE_HOME", home.filePath(".cache")}};
        QCOMPARE(startMac(PRACTICE, {}, elsewhere), QByteArray("runs\n"));
    }

    // The stand-in has the real tool make the directory, and fails only then.
    void keepsNoDirectoryThatFailed()
    {
        if (geteuid() != 0)
            QSKIP("Only root could delete what is prepared");
        const QTemporaryDir folder;
        copyPractice(
            folder.path(), "samba-tool",
            "/usr/bin/samba-tool \"$@\" >/dev/null 2>&1\necho 'No domain today.'\nexit 1\n");
        const QByteArray said =
            startMac(folder.filePath("practice"), {}, {{"XDG_CACHE_HOME", folder.path()}});
        QCOMPARE(said, preparing + "No domain today.\n");
        QCOMPARE(QDir(folder.filePath("morvanta-join-assistant")).entryList({"domain-*"}),
                 QStringList());
    }

    void saysWhyItIsNotJoinedOrBound()
    {
        const QMap<QString, QString> tools = {{"--joined", "mvjoin"}, {"--bound", "dsconfigad"}};
        for (const QString& option : tools.keys()) {
            const QTemporaryDir folder;
            copyPractice(folder.path(), tools.value(option), "echo 'No rights today.'\nexit 1\n");
            const QByteArray said = startMac(folder.filePath("practice"), {option});
            // It may have said before that it prepares the directory.
            QVERIFY2(said.endsWith("No rights today.\n"), qPrintable(option + ": " + said));
        }
    }

    void aCommandOnItCanBeInterrupted()
    {
        const QByteArray said = startMac(
            PRACTICE, {}, {}, {"/bin/bash", "-c", "echo begins; kill -INT $$; echo ignored"});
        QVERIFY2(said.endsWith("begins\n"), said.constData());
    }

    void theHostsFolderForTemporaryFilesIsNotUsed()
    {
        if (geteuid() != 0)
            QSKIP("sudo drops TMPDIR anyway");
        const QByteArray said =
            startMac(PRACTICE, {}, {{"TMPDIR", "/not-there"}}, {"/bin/mktemp", "-u"});
        QVERIFY2(said.endsWith("\n") && said.contains("/tmp/tmp."), said.constData());
    }

    // Such are /usr and /var here, as after an installation that gave them disks of their own.
    void itsFilesLieAlsoOverOtherFileSystemsOfTheHost()
    {
        if (geteuid() != 0)
            QSKIP("Only root can mount");
        QProcess mac;
        mac.start("unshare", {"--mount", "/bin/sh", "-c",
                              "mount --bind /usr /usr && mount --bind /var /var && "
                              "exec \"$@\" >/dev/null",
                              "sh", PRACTICE "/mac", "--joined", BUILD_FOLDER, "/bin/true"});
        QVERIFY(mac.waitForFinished(240000));
        QCOMPARE(mac.readAllStandardError(), QByteArray());
        QCOMPARE(mac.exitCode(), 0);
    }

    // The display asks for its key.
    void programsOnItReachTheDisplay()
    {
        QProcess display;
        display.start("xvfb-run",
                      {"--auto-servernum", PRACTICE "/mac", BUILD_FOLDER, "/usr/bin/xdpyinfo"});
        QVERIFY(display.waitForFinished(240000));
        QCOMPARE(display.exitCode(), 0);
    }

    void refusesAnUnknownScenario()
    {
        QCOMPARE(startMac(PRACTICE, {"--scenario", "none"}),
                 QByteArray("practice/mac: there is no scenario none\n"));
    }

    void whatIsWrittenIntoTheOutputFolderStays()
    {
        const QTemporaryDir output;
        const QByteArray said =
            startMac(PRACTICE, {"--output", output.path()}, {},
                     {"/bin/sh", "-c", "echo result >\"$0\"; echo runs", output.filePath("file")});
        QVERIFY2(said.endsWith("runs\n"), said.constData());
        QVERIFY(QFile::exists(output.filePath("file")));
    }

private:
    using Variables = QMap<QString, QString>;

    const QByteArray preparing = "Preparing the directory of example.test (once, about 10 s)...\n";

    // Copies the practice Mac into the folder, with a script where it replaces the tool of that
    // name or is found before it.
    static void copyPractice(const QString& folder, const QString& tool, const QByteArray& script)
    {
        QCOMPARE(QProcess::execute("cp", {"-R", PRACTICE, folder}), 0);
        QFile file(folder + "/practice/root/usr/local/sbin/" + tool);
        QVERIFY(file.open(QFile::WriteOnly));
        file.write("#!/bin/sh\n" + script);
        file.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    }

    // What a practice Mac prints when it starts with these variables in its environment, and after
    // it what the command on it prints.
    static QByteArray startMac(const QString& practice, const QStringList& options,
                               const Variables& variables = {},
                               const QStringList& command = {"/bin/echo", "runs"})
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (auto variable = variables.cbegin(); variable != variables.cend(); ++variable)
            environment.insert(variable.key(), variable.value());
        QProcess mac;
        mac.setProcessEnvironment(environment);
        mac.setProcessChannelMode(QProcess::MergedChannels);
        mac.start(practice + "/mac", options + QStringList{BUILD_FOLDER} + command);
        if (!mac.waitForFinished(240000))
            qFatal("The practice Mac does not start");
        return mac.readAll();
    }
};

QTEST_GUILESS_MAIN(TestPreparation)
#include "tst_preparation.moc"
