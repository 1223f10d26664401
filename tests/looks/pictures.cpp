#include "tests/looks/pictures.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPalette>
#include <QTextBrowser>
#include <QTreeView>

namespace {

QStringList rowsBelow(const QTreeView* tree, const QModelIndex& parent = {})
{
    QStringList rows;
    for (int row = 0; row < tree->model()->rowCount(parent); ++row) {
        const QModelIndex index = tree->model()->index(row, 0, parent);
        rows << index.data().toString();
        if (tree->isExpanded(index))
            rows << rowsBelow(tree, index);
    }
    return rows;
}

QStringList textsOf(const QWidget* widget)
{
    if (const auto* label = qobject_cast<const QLabel*>(widget))
        return {label->text()};
    if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
        return {button->text()};
    if (const auto* edit = qobject_cast<const QLineEdit*>(widget))
        return {edit->displayText().isEmpty()
                    ? edit->placeholderText()
                    : QString(edit->displayText()).replace(QChar(0x25cf), QLatin1Char('*'))};
    if (const auto* browser = qobject_cast<const QTextBrowser*>(widget))
        return {browser->toPlainText()};
    if (const auto* tree = qobject_cast<const QTreeView*>(widget))
        return rowsBelow(tree);
    return {};
}

QString visibleTextsOf(const QWidget* window)
{
    QStringList texts;
    for (const auto* widget : window->findChildren<QWidget*>()) {
        if (widget->isVisible())
            texts << textsOf(widget);
    }
    texts.removeAll(QString());
    return texts.join(QLatin1Char('\n'));
}

} // namespace

QImage pictureOf(const QString& scene)
{
    QApplication::setFont(QFont("Inter", 13));
    QPalette light(QColor(0xec, 0xec, 0xec));
    light.setColor(QPalette::Highlight, QColor(0x0a, 0x66, 0xd8));
    QApplication::setPalette(light);
    // The cursor does not blink: it would be in some pictures and not in others.
    QApplication::setCursorFlashTime(0);
    const auto opened = Scenes::open(scene);
    QCoreApplication::processEvents();
    QImage picture = opened->window()->grab().toImage().convertToFormat(QImage::Format_RGB32);
    picture.setText("Texts", visibleTextsOf(opened->window()));
    return picture;
}
