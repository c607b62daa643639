#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <memory>
#include <utility>
#include <vector>

namespace genvara {

/// A sequence of objects that it owns, one by one: a reference to one stays good while others come, go and
/// change places. What is reached through a const list is const.
///
/// A copy of the list copies its objects, by `Clone` where they have one.
template <typename Object>
class OwnedList {
    using Slots = std::vector<std::unique_ptr<Object>>;

    /// Walks the objects themselves and not what holds them.
    template <typename Seen, typename Slot>
    class Walker {
      public:
        using value_type = Object;
        using difference_type = std::ptrdiff_t;
        using reference = Seen&;
        using pointer = Seen*;
        using iterator_category = std::bidirectional_iterator_tag;

        Walker() = default;
        explicit Walker(Slot slot) : m_slot(slot) {}

        reference operator*() const { return **m_slot; }
        pointer operator->() const { return m_slot->get(); }
        Walker& operator++() {
            ++m_slot;
            return *this;
        }
        Walker operator++(int) { return Walker(m_slot++); }
        Walker& operator--() {
            --m_slot;
            return *this;
        }
        Walker operator--(int) { return Walker(m_slot--); }
        bool operator==(const Walker&) const = default;

      private:
        Slot m_slot{};
    };

  public:
    using iterator = Walker<Object, typename Slots::iterator>;
    using const_iterator = Walker<const Object, typename Slots::const_iterator>;

    OwnedList() = default;
    OwnedList(const OwnedList& other) {
        m_slots.reserve(other.Size());
        for (const Object& object : other) {
            m_slots.push_back(CopyOf(object));
        }
    }
    OwnedList(OwnedList&&) noexcept = default;
    OwnedList& operator=(const OwnedList& other) {
        if (this != &other) {
            *this = OwnedList(other);
        }
        return *this;
    }
    OwnedList& operator=(OwnedList&&) noexcept = default;
    ~OwnedList() = default;

    [[nodiscard]] std::size_t Size() const noexcept { return m_slots.size(); }

    [[nodiscard]] iterator begin() noexcept { return iterator(m_slots.begin()); }
    [[nodiscard]] iterator end() noexcept { return iterator(m_slots.end()); }
    [[nodiscard]] const_iterator begin() const noexcept { return const_iterator(m_slots.begin()); }
    [[nodiscard]] const_iterator end() const noexcept { return const_iterator(m_slots.end()); }

    // Positions count from 0, and the caller keeps within the list.
    [[nodiscard]] Object& operator[](std::size_t index) { return *m_slots[index]; }
    [[nodiscard]] const Object& operator[](std::size_t index) const { return *m_slots[index]; }

    /// The first object for which a question holds, or null.
    template <typename Question>
    [[nodiscard]] Object* Find(Question question) {
        const auto found = std::find_if(begin(), end(), question);
        return found == end() ? nullptr : &*found;
    }
    template <typename Question>
    [[nodiscard]] const Object* Find(Question question) const {
        const auto found = std::find_if(begin(), end(), question);
        return found == end() ? nullptr : &*found;
    }

    /// Puts an object before the one at `index`, or behind the last for the list's size.
    void Insert(std::size_t index, std::unique_ptr<Object> object) {
        m_slots.insert(m_slots.begin() + static_cast<std::ptrdiff_t>(index), std::move(object));
    }

    /// Gives away the first object for which a question holds; null if there is none.
    template <typename Question>
    [[nodiscard]] std::unique_ptr<Object> Take(Question question) {
        const auto found = std::ranges::find_if(m_slots, [&](const auto& slot) { return question(*slot); });
        if (found == m_slots.end()) {
            return nullptr;
        }
        std::unique_ptr<Object> taken = std::move(*found);
        m_slots.erase(found);
        return taken;
    }

    /// Puts an object in the place of the one at `index`, which it gives away.
    [[nodiscard]] std::unique_ptr<Object> Exchange(std::size_t index, std::unique_ptr<Object> object) {
        m_slots[index].swap(object);
        return object;
    }

    /// Two objects change places.
    void Swap(std::size_t left, std::size_t right) noexcept { m_slots[left].swap(m_slots[right]); }

    void Clear() noexcept { m_slots.clear(); }

  private:
    [[nodiscard]] static std::unique_ptr<Object> CopyOf(const Object& object) {
        if constexpr (requires { object.Clone(); }) {
            return object.Clone();
        } else {
            return std::make_unique<Object>(object);
        }
    }

    Slots m_slots;
};

}  // namespace genvara
