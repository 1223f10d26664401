#pragma once

#include <QMap>
#include <QString>

class cnleaf;

// A level of the container tree: its leaves by the values of their components. The map's order is
// the order on the screen.
using Level = QMap<QString, cnleaf*>;

// One node of the container tree: the prefix of a name's component, such as "OU=", and the level
// below it. The component's value is the node's key in the level that holds it.
class cnleaf
{
public:
    cnleaf() = default;
    explicit cnleaf(QString prefix) : prefix(prefix) {}
    // Deletes the child map but not the leaves that it points to.
    ~cnleaf()
    {
        delete node;
    }
    cnleaf(const cnleaf&) = delete;
    cnleaf& operator=(const cnleaf&) = delete;

    // The child map, owned by the leaf; null until one is set.
    Level* getNode()
    {
        return node;
    }
    // Takes over a map and releases nothing: the former one is the caller's from now on.
    void setNode(Level* children)
    {
        node = children;
    }

    QString getPrefix()
    {
        return prefix;
    }
    // Not called by the program, which gives a leaf its prefix when it makes it.
    void setPrefix(QString text)
    {
        prefix = text;
    }

private:
    Level* node = nullptr;
    QString prefix;
};
