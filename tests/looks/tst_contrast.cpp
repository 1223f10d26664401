#include "tests/looks/scenes.h"
#include "tests/support/worldtest.h"

#include <QLabel>
#include <QLineEdit>
#include <QTreeView>

#include <cmath>

namespace {

constexpr qreal leastContrast = 4.5;

QPalette macLight()
{
    QPalette palette(QColor(0xec, 0xec, 0xec));
    palette.setColor(QPalette::Highlight, QColor(0x00, 0x58, 0xd0));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

QPalette macDark()
{
    QPalette palette(QColor(0x46, 0x46, 0x46), QColor(0x32, 0x32, 0x32));
    palette.setColor(QPalette::Base, QColor(0x1e, 0x1e, 0x1e));
    palette.setColor(QPalette::AlternateBase, QColor(0x28, 0x28, 0x28));
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::BrightText,
          QPalette::HighlightedText})
        palette.setColor(role, Qt::white);
    palette.setColor(QPalette::Highlight, QColor(0x00, 0x58, 0xd0));
    return palette;
}

// Relative luminance and contrast as the Web Content Accessibility Guidelines define them.
qreal luminance(const QColor& color)
{
    const auto linear = [](qreal part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

qreal contrast(const QColor& one, const QColor& other)
{
    const qreal a = luminance(one);
    const qreal b = luminance(other);
    return (qMax(a, b) + 0.05) / (qMin(a, b) + 0.05);
}

bool showsText(const QWidget* widget)
{
    // What can't be used at the moment is faint by the desktop's convention.
    if (!widget->isVisible() || !widget->isEnabled())
        return false;
    if (widget->inherits("QLabel") || widget->inherits("QAbstractButton"))
        return !widget->property("text").toString().isEmpty();
    if (const auto* edit = qobject_cast<const QLineEdit*>(widget))
        return !edit->text().isEmpty() || !edit->placeholderText().isEmpty();
    return widget->inherits("QTextBrowser") || widget->inherits("QTreeView");
}

// A part of the widget, as the window shows it.
QImage pictureOf(const QWidget* widget, const QRect& place)
{
    QWidget* window = widget->window();
    const QRect part(widget->mapTo(window, place.topLeft()), place.size());
    return window->grab(part).toImage().convertToFormat(QImage::Format_RGB32);
}

// The same with its texts transparent.
QImage pictureWithoutTexts(QWidget* widget, const QRect& place)
{
    const QPalette before = widget->palette();
    const bool wasSet = widget->testAttribute(Qt::WA_SetPalette);
    QPalette glass = before;
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::PlaceholderText,
          QPalette::HighlightedText})
        glass.setColor(role, Qt::transparent);
    widget->setPalette(glass);
    const QImage picture = pictureOf(widget, place);
    widget->setPalette(wasSet ? before : QPalette());
    return picture;
}

// The lowest contrast of the text to a colour of its background. The text's colour is that of the
// pixel that stands out most; 0 when no text is seen.
qreal textContrast(QWidget* widget, const QRect& place)
{
    const QImage withText = pictureOf(widget, place);
    const QImage withoutText = pictureWithoutTexts(widget, place);
    qreal strongest = 0;
    QColor text;
    QList<QColor> grounds;
    for (int y = 0; y < withText.height(); ++y) {
        for (int x = 0; x < withText.width(); ++x) {
            const QColor with = withText.pixelColor(x, y);
            const QColor without = withoutText.pixelColor(x, y);
            if (with == without)
                continue;
            if (!grounds.contains(without))
                grounds << without;
            if (contrast(with, without) > strongest) {
                strongest = contrast(with, without);
                text = with;
            }
        }
    }
    qreal worst = strongest;
    for (const QColor& ground : grounds)
        worst = qMin(worst, contrast(text, ground));
    return worst;
}

} // namespace

class TestContrast : public WorldTest
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        QApplication::setLayoutDirection(Qt::LeftToRight);
        WorldTest::cleanup();
    }

    void textCanBeRead_data()
    {
        addColumns<QPalette, QString, Qt::LayoutDirection>("palette", "scene", "direction");
        for (const QString& name : Scenes::names()) {
            addRow(qPrintable(name + ", light"), macLight(), name, Qt::LeftToRight);
            addRow(qPrintable(name + ", dark"), macDark(), name, Qt::LeftToRight);
            addRow(qPrintable(name + ", right to left"), macLight(), name, Qt::RightToLeft);
        }
    }

    void textCanBeRead()
    {
        QFETCH(QPalette, palette);
        QFETCH(QString, scene);
        QFETCH(Qt::LayoutDirection, direction);
        QApplication::setPalette(palette);
        QApplication::setLayoutDirection(direction);
        const auto opened = Scenes::open(scene);
        // A chosen row has another background than the rest, and a test of its own.
        for (auto* tree : opened->window()->findChildren<QTreeView*>())
            tree->clearSelection();
        int texts = 0;
        for (auto* widget : opened->window()->findChildren<QWidget*>()) {
            if (!showsText(widget))
                continue;
            const qreal found = textContrast(widget, widget->rect());
            QVERIFY2(
                found >= leastContrast,
                qPrintable(QString("%1: contrast of %2").arg(widget->objectName()).arg(found)));
            ++texts;
        }
        QVERIFY(texts > 0);
    }

    void faintTextIsFound()
    {
        QApplication::setPalette(macLight());
        const auto opened = Scenes::open("credentials");
        auto* label = child<QLabel>(opened->content(), "label_4");
        QPalette faint;
        faint.setColor(QPalette::WindowText, QColor(0x90, 0x90, 0x90));
        label->setPalette(faint);
        const qreal found = textContrast(label, label->rect());
        QVERIFY(found > 1);
        QVERIFY(found < leastContrast);
    }

    void chosenContainerCanBeRead()
    {
        for (const bool dark : {false, true}) {
            QApplication::setPalette(dark ? macDark() : macLight());
            const auto opened = Scenes::open("containers");
            auto* tree = child<QTreeView>(opened->content(), "browserTree");
            tree->setFocus();
            tree->setCurrentIndex(tree->model()->index(0, 0));
            const QRect row = tree->visualRect(tree->currentIndex());
            QVERIFY2(textContrast(tree, row.translated(tree->viewport()->pos())) >= leastContrast,
                     dark ? "dark" : "light");
        }
    }

    void imagesStandOut_data()
    {
        addColumns<QPalette, QString>("palette", "image");
        for (const char* name :
             {"up", "down", "help", "lock icon", "adlock icon", "blanklock", "Morvanta"}) {
            addRow(qPrintable(QString("%1, light").arg(name)), macLight(), name);
            addRow(qPrintable(QString("%1, dark").arg(name)), macDark(), name);
        }
    }

    // An image that means something needs a contrast of 3 : 1, here in six of ten opaque pixels.
    void imagesStandOut()
    {
        QFETCH(QPalette, palette);
        QFETCH(QString, image);
        Q_INIT_RESOURCE(Resources);
        const QImage pixels(QString(":/:/%1.png").arg(image));
        QVERIFY(!pixels.isNull());
        int seen = 0;
        int drawn = 0;
        for (int y = 0; y < pixels.height(); ++y) {
            for (int x = 0; x < pixels.width(); ++x) {
                const QColor pixel = pixels.pixelColor(x, y);
                if (pixel.alpha() < 255)
                    continue;
                ++drawn;
                if (contrast(pixel, palette.color(QPalette::Window)) >= 3)
                    ++seen;
            }
        }
        QVERIFY(drawn > 0);
        QVERIFY2(seen * 10 >= drawn * 6, qPrintable(QString("%1 of %2").arg(seen).arg(drawn)));
    }
};

WORLD_TEST_MAIN(TestContrast)
#include "tst_contrast.moc"
