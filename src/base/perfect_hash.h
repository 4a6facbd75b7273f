#pragma once

// A perfect hash of fixed names, computed at compile time: a look-up is one probe. Names are distributed to
// buckets by one half of their hash. Each bucket has a displacement, found by trial, that maps its names to
// free slots.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace metrify {

/// Running hash of a name: start with name_hash_seed and add its characters in order.
constexpr std::uint64_t name_hash_seed = 0xcbf29ce484222325;
constexpr std::uint64_t add_to_name_hash(std::uint64_t hash, char c) {
    return (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3;
}
constexpr std::uint64_t name_hash(std::string_view name) {
    std::uint64_t hash = name_hash_seed;
    for (const char c : name)
        hash = add_to_name_hash(hash, c);
    return hash;
}

/// Maps the hashes of Count names to their indices 0 to Count - 1. Slots and Buckets are powers of 2.
template <std::size_t Count, std::size_t Slots, std::size_t Buckets>
class perfect_hash {
  public:
    static constexpr std::uint16_t none = 0xffff;

    /// The index of the only name that can have this hash, or none. The caller compares the names.
    constexpr std::uint16_t find(std::uint64_t hash) const {
        return slots_[slot_of(hash, displacements_[bucket_of(hash)])];
    }

    /// If two names have the same hash, the search for a displacement does not end, and compilation fails.
    constexpr explicit perfect_hash(const std::array<std::uint64_t, Count>& hashes) {
        slots_.fill(none);
        const bucket_members members(hashes);
        // The fullest buckets come first, while most slots are free.
        for (std::size_t size = members.largest(); size > 0; --size) {
            for (std::size_t bucket = 0; bucket < Buckets; ++bucket)
                if (members.size(bucket) == size)
                    place_bucket(hashes, members, bucket);
        }
    }

  private:
    static constexpr std::size_t bucket_of(std::uint64_t hash) { return (hash >> 40) & (Buckets - 1); }
    static constexpr std::size_t slot_of(std::uint64_t hash, std::uint16_t displacement) {
        return ((hash >> 8) ^ ((hash >> 24) * displacement)) & (Slots - 1);
    }

    /// The names' indices in the order of their buckets.
    struct bucket_members {
        constexpr explicit bucket_members(const std::array<std::uint64_t, Count>& hashes) {
            for (const std::uint64_t hash : hashes)
                ++first[bucket_of(hash) + 1];
            for (std::size_t bucket = 0; bucket < Buckets; ++bucket)
                first[bucket + 1] += first[bucket];
            std::array<std::size_t, Buckets + 1> next = first;
            for (std::size_t i = 0; i < Count; ++i)
                member[next[bucket_of(hashes[i])]++] = i;
        }
        constexpr std::size_t size(std::size_t bucket) const { return first[bucket + 1] - first[bucket]; }
        constexpr std::size_t largest() const {
            std::size_t most = 0;
            for (std::size_t bucket = 0; bucket < Buckets; ++bucket)
                most = size(bucket) > most ? size(bucket) : most;
            return most;
        }

        std::array<std::size_t, Buckets + 1> first = {};
        std::array<std::size_t, Count> member = {};
    };

    // Occupies the slots of a bucket's names for a displacement. If one is occupied already, releases them
    // all.
    constexpr bool fits(const std::array<std::uint64_t, Count>& hashes, const bucket_members& members,
                        std::size_t bucket, std::uint16_t displacement) {
        for (std::size_t m = members.first[bucket]; m < members.first[bucket + 1]; ++m) {
            std::uint16_t& slot = slots_[slot_of(hashes[members.member[m]], displacement)];
            if (slot != none) {
                while (m-- > members.first[bucket])
                    slots_[slot_of(hashes[members.member[m]], displacement)] = none;
                return false;
            }
            slot = static_cast<std::uint16_t>(members.member[m]);
        }
        return true;
    }

    constexpr void place_bucket(const std::array<std::uint64_t, Count>& hashes, const bucket_members& members,
                                std::size_t bucket) {
        std::uint16_t displacement = 0;
        while (!fits(hashes, members, bucket, displacement))
            ++displacement;
        displacements_[bucket] = displacement;
    }

    std::array<std::uint16_t, Slots> slots_ = {};
    std::array<std::uint16_t, Buckets> displacements_ = {};
};

} // namespace metrify
