#pragma once

// Entries with names, in the order in which they were added, found by name without a walk. An entry's address
// stays the same while the list lives.

#include <cstddef>
#include <deque>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace metrify {

/// Entry must have a member `name` that doesn't change and converts to std::string_view.
template <class Entry>
class named_list {
  public:
    bool empty() const { return entries_.empty(); }
    std::size_t size() const { return entries_.size(); }
    Entry& operator[](std::size_t index) { return entries_[index]; }

    /// The entry of this name, or null.
    Entry* find(std::string_view name) {
        if (entries_.empty())
            return nullptr;
        const auto place = by_name_.find(name);
        return place == by_name_.end() ? nullptr : place->second;
    }

    /// The name must not be there yet.
    Entry& add(Entry entry) {
        Entry& added = entries_.emplace_back(std::move(entry));
        by_name_.emplace(added.name, &added);
        return added;
    }

    /// Gives all memory back: one long run doesn't burden the short ones behind it.
    void clear() {
        if (entries_.empty())
            return;
        by_name_ = {};
        entries_ = {};
    }

  private:
    std::deque<Entry> entries_;
    std::unordered_map<std::string_view, Entry*> by_name_;
};

} // namespace metrify
