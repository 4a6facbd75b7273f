#pragma once

// Named entries in the order in which they were added, with a hash index by name. The address of an entry
// does not change while the list lives.

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace metrify {

/// Entry must have a constant member `name` that converts to std::string_view.
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

    /// The name must be new.
    Entry& add(Entry entry) {
        Entry& added = entries_.emplace_back(std::move(entry));
        by_name_.emplace(added.name, &added);
        return added;
    }

    /// The names, in the order in which the entries were added.
    std::vector<std::string> names() const {
        std::vector<std::string> all;
        all.reserve(entries_.size());
        for (const Entry& entry : entries_)
            all.emplace_back(entry.name);
        return all;
    }

    /// Removes the entries from this index on.
    void shrink_to(std::size_t size) {
        while (entries_.size() > size) {
            by_name_.erase(entries_.back().name);
            entries_.pop_back();
        }
    }

    /// Releases all memory, so that a large run does not slow down the small ones after it.
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
