// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "storage/byte_stream.h"
#include "storage/work_fields.h"

#include <array>
#include <chrono>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tessel {

// Fields as bytes: numbers as they are, texts and lists behind their count (8 bytes), what may be missing
// behind a byte 0 or 1, times as nanoseconds since 1970, and a struct as its fields in their order.

class FieldWriter {
  public:
    explicit FieldWriter(ByteWriter& out) : out_(out) {}

    template <typename... Fields>
    void operator()(const Fields&... fields) {
        (put(fields), ...);
    }

  private:
    void put(bool value) { out_.number(static_cast<std::uint8_t>(value)); }
    void put(Number auto value) { out_.number(value); }
    // By its word: another version may count kinds otherwise.
    void put(ActKind kind) { put(std::string(wordOf(kind))); }
    void put(TextEncoding encoding) { out_.number(static_cast<std::uint8_t>(encoding)); }
    void put(const std::string& text) {
        out_.count(text.size());
        out_.bytes(text);
    }
    void put(std::chrono::system_clock::time_point time) {
        out_.number(std::int64_t{std::chrono::nanoseconds(time.time_since_epoch()).count()});
    }
    template <typename First, typename Second>
    void put(const std::pair<First, Second>& pair) {
        (*this)(pair.first, pair.second);
    }
    template <Number T, std::size_t count>
    void put(const std::array<T, count>& values) {
        out_.numbers(std::span<const T>(values));
    }
    template <typename T>
    void put(const std::vector<T>& values) {
        out_.count(values.size());
        if constexpr (Number<T>)
            out_.numbers(std::span<const T>(values));
        else
            for (const T& value : values)
                put(value);
    }
    template <typename T>
    void put(const std::deque<T>& values) {
        out_.count(values.size());
        for (const T& value : values)
            put(value);
    }
    template <typename T>
    void put(const std::optional<T>& value) {
        put(value.has_value());
        if (value) put(*value);
    }
    template <typename T>
    void put(const std::unique_ptr<T>& value) {
        put(value != nullptr);
        if (value) put(*value);
    }
    void put(const SiteTable& table) {
        const auto capacity = static_cast<std::size_t>(table.capacity());
        out_.count(capacity);
        for (int column = 0; column < kSiteColumns; ++column)
            out_.numbers(std::span(table.column(column), capacity));
    }
    template <typename T>
    requires requires(const T& value, FieldWriter& writer) { visitFields(value, writer); }
    void put(const T& value) { visitFields(value, *this); }

    ByteWriter& out_;
};

/// Before and after 1970, as far as whole seconds can be told.
inline constexpr auto kMostTime =
    std::chrono::duration_cast<std::chrono::seconds>(std::chrono::system_clock::duration::max());

/// Throws DamagedBytes.
class FieldReader {
  public:
    explicit FieldReader(ByteReader& in) : in_(in) {}

    template <typename... Fields>
    void operator()(Fields&... fields) {
        (get(fields), ...);
    }

  private:
    void get(bool& value) { value = below(2) == 1; }
    template <Number T>
    void get(T& value) {
        value = in_.number<T>();
    }
    void get(ActKind& kind) {
        std::string word;
        get(word);
        const auto known = actKindOf(word);
        if (!known) throw DamagedBytes("an act in it is of no kind that there is");
        kind = *known;
    }
    void get(TextEncoding& encoding) { encoding = static_cast<TextEncoding>(below(3)); }
    void get(std::string& text) {
        text.resize(in_.count(1));
        in_.bytes(text.data(), text.size());
    }
    void get(std::chrono::system_clock::time_point& time) {
        const std::chrono::nanoseconds since(in_.number<std::int64_t>());
        if (since < -kMostTime || since > kMostTime) throw DamagedBytes("a time in it is none");
        time = std::chrono::system_clock::time_point(
            std::chrono::duration_cast<std::chrono::system_clock::duration>(since));
    }
    template <typename First, typename Second>
    void get(std::pair<First, Second>& pair) {
        (*this)(pair.first, pair.second);
    }
    template <Number T, std::size_t count>
    void get(std::array<T, count>& values) {
        in_.numbers(std::span<T>(values));
    }
    // A list grows by what has been read of it: what stands in a file is smaller than what it is in memory.
    template <typename T>
    void get(std::vector<T>& values) {
        if constexpr (Number<T>) {
            values.resize(in_.count(sizeof(T)));
            in_.numbers(std::span<T>(values));
        } else {
            for (std::size_t left = in_.count(1); left > 0; --left)
                get(values.emplace_back());
        }
    }
    void get(std::deque<Act>& acts) {
        for (std::size_t left = in_.count(1); left > 0; --left)
            get(acts.emplace_back(ActDescription()));
    }
    template <typename T>
    void get(std::optional<T>& value) {
        if (below(2) == 1) get(value.emplace());
    }
    template <typename T>
    void get(std::unique_ptr<T>& value) {
        if (below(2) == 0) return;
        value = std::make_unique<T>();
        get(*value);
    }
    void get(SiteTable& table) {
        const std::size_t capacity = in_.count(kSiteColumns * sizeof(double));
        table.resize(static_cast<SiteIndex>(capacity));
        for (int column = 0; column < kSiteColumns; ++column)
            in_.numbers(std::span(table.column(column), capacity));
    }
    template <typename T>
    requires requires(T& value, FieldReader& reader) { visitFields(value, reader); }
    void get(T& value) { visitFields(value, *this); }

    int below(int bound) {
        const int value = in_.number<std::uint8_t>();
        if (value >= bound) throw DamagedBytes("a value in it is none that there is");
        return value;
    }

    ByteReader& in_;
};

}  // namespace tessel
