#pragma once

#include <QApplication>
#include <QScrollArea>

// A scroll area without a frame, for forms whose fixed size is too small for long texts in a large
// font. It takes no focus itself, and scrolls to a widget that gets it by key.
class ScrollingArea : public QScrollArea
{
public:
    explicit ScrollingArea(QWidget* parent = nullptr) : QScrollArea(parent)
    {
        setFrameShape(QFrame::NoFrame);
        setFocusPolicy(Qt::NoFocus);
        setWidgetResizable(true);
        viewport()->setAutoFillBackground(false);
        connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
            // A widget that moved under the pointer would not get the click that gave it the focus.
            if (now == nullptr || !contents->isAncestorOf(now) ||
                QApplication::mouseButtons() != Qt::NoButton)
                return;
            ensureWidgetVisible(now);
            // Of an edit, ensureWidgetVisible() shows the cursor alone.
            const QPoint middle = now->mapTo(contents, now->rect().center());
            ensureVisible(middle.x(), middle.y(), 0, now->height() / 2 + 1);
        });
    }

    // Hides QScrollArea::setWidget(), which computes the size of the contents at once: here that
    // waits until they are shown, so that the start loads no font of a later page. Takes ownership.
    void setWidget(QWidget* widget)
    {
        contents = widget;
        contents->setParent(viewport());
    }

protected:
    void showEvent(QShowEvent* event) override
    {
        QScrollArea::setWidget(contents); // does nothing from the second time on
        contents->setAutoFillBackground(false);
        QScrollArea::showEvent(event);
    }

private:
    QWidget* contents = nullptr;
};
