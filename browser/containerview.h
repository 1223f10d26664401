#pragma once

#include <QHeaderView>
#include <QScrollBar>
#include <QTreeView>

// A tree with one column. It is at least as wide as the view, so that a chosen row is marked from
// edge to edge, and as the names that are or were scrolled into view, so that none is cut off.
class ContainerView : public QTreeView
{
public:
    explicit ContainerView(QWidget* parent = nullptr) : QTreeView(parent)
    {
        header()->setStretchLastSection(false);
        header()->setSectionResizeMode(QHeaderView::ResizeToContents);
        header()->setResizeContentsPrecision(0);
        connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &ContainerView::makeRoom);
    }

    void reset() override
    {
        QTreeView::reset();
        widest = 0;
        setLeastWidth();
    }

protected:
    void resizeEvent(QResizeEvent* event) override
    {
        setLeastWidth();
        QTreeView::resizeEvent(event);
    }

private:
    // The header doesn't measure the names that scrolling brings into view. Their room stays when
    // they are out of view again, or else the horizontal scroll bar would come and go.
    void makeRoom()
    {
        widest = qMax(widest, sizeHintForColumn(0));
        setLeastWidth();
    }
    void setLeastWidth()
    {
        header()->setMinimumSectionSize(qMax(widest, viewport()->width()));
    }

    int widest = 0; // of the names that were scrolled to in this tree, in pixels
};
