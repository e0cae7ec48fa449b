#include "tools/macho/export_trie.h"

#include <optional>
#include <vector>

namespace macho {

namespace {

struct Node {
    std::optional<uint32_t> address; // of the name that ends here
    std::map<std::string_view, size_t> children;
    uint32_t offset = 0;
};

// Flat, and with numbers for links: names may nest deeply, and nothing here recurs.
class Trie {
public:
    void add(std::string_view name, uint32_t address);
    Bytes encode();

private:
    void write(const Node &node, ByteWriter &out) const;
    std::vector<Node> nodes = std::vector<Node>(1);
};

size_t commonLength(std::string_view left, std::string_view right)
{
    size_t length = 0;
    while (length < left.size() && length < right.size() && left[length] == right[length])
        length++;
    return length;
}

void Trie::add(std::string_view name, uint32_t address)
{
    size_t current = 0;
    while (!name.empty()) {
        // At most one child begins with the same character.
        auto &children = nodes[current].children;
        auto child = children.lower_bound(name.substr(0, 1));
        size_t common = child == children.end() ? 0 : commonLength(child->first, name);
        if (common == 0) {
            size_t leaf = nodes.size();
            children.emplace(name, leaf);
            nodes.emplace_back();
            current = leaf;
            common = name.size();
        } else if (common == child->first.size()) {
            current = child->second;
        } else { // split the edge
            std::string_view beginning = child->first.substr(0, common), rest = child->first.substr(common);
            size_t below = child->second, middle = nodes.size();
            children.erase(child);
            children.emplace(beginning, middle);
            nodes.emplace_back();
            nodes[middle].children.emplace(rest, below);
            current = middle;
        }
        name.remove_prefix(common);
    }
    nodes[current].address = address;
}

void Trie::write(const Node &node, ByteWriter &out) const
{
    ByteWriter symbol;
    if (node.address) {
        symbol.uleb(0); // an ordinary symbol
        symbol.uleb(*node.address);
    }
    out.uleb(static_cast<uint32_t>(symbol.size()));
    out.append(symbol.bytes);
    out.u8(static_cast<uint32_t>(node.children.size()));
    for (const auto &[edge, child] : node.children) {
        out.text(edge);
        out.uleb(nodes[child].offset);
    }
}

// A node's size depends on its children's offsets, which depend on sizes: repeat until nothing moves. Offsets only
// grow.
Bytes Trie::encode()
{
    for (;;) {
        ByteWriter out;
        bool moved = false;
        for (Node &node : nodes) {
            moved |= node.offset != out.size();
            node.offset = static_cast<uint32_t>(out.size());
            write(node, out);
        }
        if (!moved)
            return std::move(out.bytes);
    }
}

} // namespace

Bytes exportTrie(const std::map<std::string_view, uint32_t> &exports)
{
    Trie trie;
    for (const auto &[name, address] : exports)
        trie.add(name, address);
    return trie.encode();
}

} // namespace macho
