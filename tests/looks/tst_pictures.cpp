#include "tests/looks/pictures.h"
#include "tests/support/worldtest.h"

#include <QDir>
#include <QRegularExpression>

// The pictures in the documents show the assistant as it is.
class TestPictures : public WorldTest
{
    Q_OBJECT

private slots:
    void everySceneHasItsPicture();
    void pictureShowsTheScene_data();
    void pictureShowsTheScene();
    void documentsShowOnlyPicturesThatExist();
};

void TestPictures::everySceneHasItsPicture()
{
    QStringList files;
    for (const QString& name : Scenes::names())
        files << name + QStringLiteral(".png");
    files.sort();
    QStringList pictures =
        QDir(QStringLiteral(PICTURES_FOLDER)).entryList({"*.png"}, QDir::Files, QDir::Name);
    // Taken on the practice Mac, by its tour.
    pictures = pictures.filter(QRegularExpression(QStringLiteral("^(?!tour-)")));
    QCOMPARE(pictures, files);
}

void TestPictures::pictureShowsTheScene_data()
{
    QTest::addColumn<QString>("scene");
    for (const QString& name : Scenes::names())
        QTest::newRow(qPrintable(name)) << name;
}

void TestPictures::pictureShowsTheScene()
{
    QFETCH(QString, scene);
    const QString file = QStringLiteral(PICTURES_FOLDER "/%1.png").arg(scene);
    const QImage stored(file);
    const QImage now = pictureOf(scene);
    QCOMPARE(stored.size(), now.size());
    QCOMPARE(stored.text(QStringLiteral("Texts")), now.text(QStringLiteral("Texts")));
    QVERIFY(QFileInfo(file).size() < 60 * 1024);
}

void TestPictures::documentsShowOnlyPicturesThatExist()
{
    const QRegularExpression link(QStringLiteral("\\]\\((?:docs/)?(images/[^)]+)\\)"));
    const QDir docs(QFileInfo(QStringLiteral(PICTURES_FOLDER)).path());
    for (const char* document : {"guide.md", "../README.md"}) {
        QFile file(docs.filePath(QString::fromLatin1(document)));
        QVERIFY2(file.open(QIODevice::ReadOnly), document);
        const QString text = QString::fromUtf8(file.readAll());
        auto links = link.globalMatch(text);
        QVERIFY2(links.hasNext(), document);
        while (links.hasNext()) {
            const QString picture = links.next().captured(1);
            QVERIFY2(docs.exists(picture), qPrintable(picture));
        }
    }
}

WORLD_TEST_MAIN(TestPictures)
#include "tst_pictures.moc"
