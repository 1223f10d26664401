#include "benchmarks/containernames.h"

#include <array>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr char domain[] = "DC=ad,DC=example,DC=com";
constexpr int domainLevels = 3;
constexpr int deepestLevel = 10;

constexpr std::array<const char*, 24> words = {"Sales",
                                               "Human Resources",
                                               "Forschung",
                                               "Müller\\, Anna",
                                               "\\\"Alpha\\\" Team",
                                               "東京支社",
                                               "Zürich",
                                               "São Paulo",
                                               "Servers",
                                               "Workstations",
                                               "Groups",
                                               "Users",
                                               "Łódź",
                                               "Sub\\, North",
                                               "Legal",
                                               "Operations",
                                               "Field Service",
                                               "Контакты",
                                               "Lab",
                                               "Printers",
                                               "Finance",
                                               "Support",
                                               "Contractors",
                                               "Disabled Accounts"};

struct Container {
    std::string name;
    int level;
    std::vector<int> children;
};

class Directory
{
public:
    Directory(int count, int widest)
    {
        containers.push_back({domain, domainLevels, {}});
        const auto total = static_cast<size_t>(count) + 1;
        containers.reserve(total);
        if (widest > 0)
            addChildren(add(0), widest, total);
        while (containers.size() < total) {
            // By itself: in which order a call's arguments are computed is the compiler's choice.
            const int size = familySize();
            addChildren(openContainer(), size, total);
        }
    }

    QByteArrayList inTreeOrder() const
    {
        QByteArrayList names;
        names.reserve(static_cast<int>(containers.size()) - 1);
        list(0, &names);
        return names;
    }

    int below(size_t limit)
    {
        // Not a distribution of the standard library, whose results differ between libraries.
        return static_cast<int>(random() % limit);
    }

private:
    // Many containers hold a few others, few hold hundreds.
    int familySize()
    {
        const int size = 1 + below(12);
        return below(20) == 0 ? size * 20 : size;
    }

    // The shallowest of three, so that the tree grows broad rather than deep.
    int openContainer()
    {
        int chosen = below(containers.size());
        for (int i = 0; i < 2 || levelOf(chosen) == deepestLevel; ++i) {
            const int other = below(containers.size());
            if (levelOf(other) < levelOf(chosen))
                chosen = other;
        }
        return chosen;
    }

    int levelOf(int container) const
    {
        return containers[static_cast<size_t>(container)].level;
    }

    void addChildren(int parent, int count, size_t total)
    {
        for (int i = 0; i < count && containers.size() < total; ++i)
            add(parent);
    }

    int add(int parent)
    {
        Container& above = containers[static_cast<size_t>(parent)];
        const auto index = static_cast<int>(containers.size());
        // The number makes the value unique among its siblings.
        std::string value = words.at(static_cast<size_t>(below(words.size())));
        value += ' ' + std::to_string(above.children.size());
        if (below(8) == 0)
            value += " (" + std::string(static_cast<size_t>(4 + below(30)), 'x') + ')';
        const char* attribute = below(6) == 0 ? "CN=" : "OU=";
        above.children.push_back(index);
        containers.push_back({attribute + value + ',' + above.name, above.level + 1, {}});
        return index;
    }

    void list(int index, QByteArrayList* names) const
    {
        const Container& container = containers[static_cast<size_t>(index)];
        if (index != 0)
            names->append(QByteArray::fromStdString(container.name));
        for (const int child : container.children)
            list(child, names);
    }

    std::mt19937_64 random{20240229};
    std::vector<Container> containers;
};

} // namespace

QByteArrayList containerNames(int count, Order order, int widest)
{
    Directory directory(count, widest);
    QByteArrayList names = directory.inTreeOrder();
    if (order == Order::Shuffled) {
        for (int i = names.size() - 1; i > 0; --i)
            names.swapItemsAt(i, directory.below(static_cast<size_t>(i) + 1));
    }
    return names;
}
