#include "tests/looks/pictures.h"
#include "tests/support/worldtest.h"

#include <QDir>
#include <QRegularExpression>

// render_pictures' files have the assistant's sizes and texts; they and the tour's film are small.
class TestPictures : public WorldTest
{
    Q_OBJECT

private slots:
    void everySceneHasItsPicture()
    {
        QStringList files;
        for (const QString& name : Scenes::names())
            files << name + QString(".png");
        files.sort();
        QStringList pictures =
            QDir(QString(PICTURES_FOLDER)).entryList({"*.png"}, QDir::Files, QDir::Name);
        // The tour takes its own on the practice Mac.
        pictures = pictures.filter(QRegularExpression("^(?!tour-)"));
        QCOMPARE(pictures, files);
    }

    void pictureHasTheScenesSizeAndTexts_data()
    {
        addColumns<QString>("scene");
        for (const QString& name : Scenes::names())
            addRow(qPrintable(name), name);
    }

    void pictureHasTheScenesSizeAndTexts()
    {
        QFETCH(QString, scene);
        const QString file = QString(PICTURES_FOLDER "/%1.png").arg(scene);
        const QImage stored(file);
        const QImage now = pictureOf(scene);
        QCOMPARE(stored.size(), now.size());
        QCOMPARE(stored.text("Texts"), now.text("Texts"));
        QVERIFY(QFileInfo(file).size() < 100 * 1024);
    }

    void filmOfTheTourIsAnimatedAndSmall()
    {
        QFile film(QString(PICTURES_FOLDER "/tour-join.webp"));
        QVERIFY(film.open(QIODevice::ReadOnly));
        const QByteArray header = film.read(21);
        QCOMPARE(header.left(4) + header.mid(8, 8), QByteArray("RIFFWEBPVP8X"));
        constexpr char animated = 0x02;
        QVERIFY(header.at(20) & animated);
        QVERIFY(film.size() < 1500 * 1000);
    }
};

WORLD_TEST_MAIN(TestPictures)
#include "tst_pictures.moc"
