#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "core/text/Unicode.h"

namespace tamarind {

// Finds numbers by names that compare by EqualsIgnoreCase: a hash table with open addressing that
// stores nothing but the numbers. The names stay with the owner of the table, who passes `names` to
// each call; it has Name(number) and Hash(number), the HashOf that name.
//
// No choice of names can make it slow: the hash has a random seed, and if too many used slots
// follow each other all the same, the table becomes a tree.
class NameTable {
public:
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    // Equal for names that compare equal, and for a name with and without a ";" before it.
    static std::uint32_t HashOf(std::string_view name) {
        return TableHashIgnoreCase(WithoutComment(name));
    }

    // Empties the table and makes room for `count` names. To be called before anything else.
    void Reset(std::size_t count);
    bool IsMade() const { return !m_slots.empty(); }
    // Whether the table has to be Reset, with all of its names, before another name is added.
    bool IsCrowded() const { return !m_isTree && 4 * (m_used + 1) > 3 * m_slots.size(); }

    // The number of the name, or kNone.
    template <typename Names>
    std::uint32_t Find(Names names, std::uint32_t hash, std::string_view name) {
        return FindForm(names, hash, name, [names, name](std::uint32_t number) {
            return EqualsIgnoreCase(names.Name(number), name);
        });
    }

    // The first number with this hash that `isIt(number)` accepts, or kNone. Those are the numbers
    // of the name with and without a ";", and by chance others.
    template <typename Names, typename IsIt>
    std::uint32_t FindForm(Names names, std::uint32_t hash, std::string_view name, IsIt isIt) {
        return Place(
            names, hash, [name] { return name; }, isIt);
    }

    // Makes `number` the one of its name. Returns the number that the name had before, or kNone.
    template <typename Names>
    std::uint32_t Put(Names names, std::uint32_t number) {
        std::uint32_t& place = PlaceOf(names, number);
        const std::uint32_t former = place;
        if (former == kNone && m_isTree) {
            m_tree.emplace(TreeKey(names.Name(number)), number);
            return former;
        }
        m_used += former == kNone ? 1 : 0;
        place = number;
        return former;
    }

    // Removes the name of `number`, which must be in the table.
    template <typename Names>
    void Erase(Names names, std::uint32_t number) {
        PlaceOf(names, number) = kErased;
    }

private:
    static constexpr std::uint32_t kErased = kNone - 1;
    // In a large and crowded table a row gets this long by chance once in a million tables.
    static constexpr std::size_t kLongestRow = 512;

    static std::string_view WithoutComment(std::string_view name) {
        if (!name.empty() && name.front() == ';') {
            name.remove_prefix(1);
        }
        return name;
    }
    static std::string TreeKey(std::string_view name) { return ToUpperCase(WithoutComment(name)); }

    template <typename Names>
    std::uint32_t& PlaceOf(Names names, std::uint32_t number) {
        const auto nameOf = [names, number] { return names.Name(number); };
        return Place(names, names.Hash(number), nameOf, [names, nameOf](std::uint32_t other) {
            return EqualsIgnoreCase(names.Name(other), nameOf());
        });
    }

    // The slot of the first number that `isIt` accepts, or an empty one. `nameOf` is called only if
    // the name is needed, because names are not in the cache. Everything is passed by value: an
    // address would keep it in memory instead of in registers.
    template <typename Names, typename NameOf, typename IsIt>
    std::uint32_t& Place(Names names, std::uint32_t hash, NameOf nameOf, IsIt isIt) {
        if (!m_isTree) {
            const std::size_t mask = m_slots.size() - 1;
            for (std::size_t step = 0; step < kLongestRow; ++step) {
                std::uint32_t& slot = m_slots[(hash + step) & mask];
                if (slot == kNone || (slot != kErased && names.Hash(slot) == hash && isIt(slot))) {
                    return slot;
                }
            }
        }
        return PlaceInTree(names, nameOf, isIt);
    }

    template <typename Names, typename NameOf, typename IsIt>
    [[gnu::noinline]] std::uint32_t& PlaceInTree(Names names, NameOf nameOf, IsIt isIt) {
        if (!m_isTree) {
            MakeTree(names);
        }
        const auto [first, behind] = m_tree.equal_range(TreeKey(nameOf()));
        for (auto entry = first; entry != behind; ++entry) {
            if (entry->second != kErased && isIt(entry->second)) {
                return entry->second;
            }
        }
        return m_nowhere = kNone;
    }

    template <typename Names>
    void MakeTree(Names names) {
        for (const std::uint32_t number : m_slots) {
            if (number != kNone && number != kErased) {
                m_tree.emplace(TreeKey(names.Name(number)), number);
            }
        }
        m_isTree = true;
    }

    std::vector<std::uint32_t> m_slots;  // a power of two, at most three quarters of them used
    std::size_t m_used = 0;              // erased ones included
    bool m_isTree = false;
    std::multimap<std::string, std::uint32_t> m_tree;
    std::uint32_t m_nowhere = kNone;
};

}  // namespace tamarind
