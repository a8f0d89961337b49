#pragma once

#include <array>
#include <cstddef>
#include <vector>

/* A list that is nearly always short: as long as it has at most `N` elements it needs no memory but its
   own. */
template <typename T, std::size_t N> class ShortList {
public:
    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }
    const T *begin() const { return many_.empty() ? few_.data() : many_.data(); }
    const T *end() const { return begin() + size_; }
    T &operator[](std::size_t place) { return many_.empty() ? few_[place] : many_[place]; }
    const T &operator[](std::size_t place) const { return begin()[place]; }
    T &back() { return (*this)[size_ - 1]; }

    void push_back(const T &element) {
        if (size_ < N) {
            few_[size_++] = element;
            return;
        }
        if (many_.empty())
            many_.assign(few_.begin(), few_.end());
        many_.push_back(element);
        ++size_;
    }

private:
    std::array<T, N> few_{};
    std::vector<T> many_; /* all of them once they are more than N */
    std::size_t size_ = 0;
};
