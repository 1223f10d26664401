#include "browser/cnleaf.h"

cnleaf::cnleaf(QString prefix) : prefix(prefix) {}

cnleaf::~cnleaf()
{
    if (node != nullptr)
        node->clear();
    delete node;
}

Level* cnleaf::getNode()
{
    return node;
}

void cnleaf::setNode(Level* children)
{
    node = children;
}

QString cnleaf::getPrefix()
{
    return prefix;
}

void cnleaf::setPrefix(QString text)
{
    prefix = text;
}
