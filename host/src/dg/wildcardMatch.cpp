#include "dg/wildcardMatch.h"

#include <array>
#include <cstdint>
#include <vector>

namespace host {
namespace {

constexpr std::size_t kNone = std::string_view::npos;

// `piece` (no '*') against the same number of characters of `text` at `at`.
bool matchesAt(std::string_view piece, std::string_view text, std::size_t at)
{
    for (std::size_t i = 0; i < piece.size(); ++i)
        if (piece[i] != '?' && piece[i] != text[at + i])
            return false;
    return true;
}

// The first place `piece` (no '*', not empty) matches in `text`, or kNone. Shift-And: bit j
// of the state says that the piece's first j + 1 characters end at the current character.
std::size_t findPiece(std::string_view piece, std::string_view text)
{
    const std::size_t m = piece.size();
    const std::size_t words = (m + 63) / 64;
    std::vector<std::uint64_t> masks(256 * words, 0), any(words, 0), state(words, 0);
    for (std::size_t j = 0; j < m; ++j) {
        const std::uint64_t bit = std::uint64_t(1) << (j % 64);
        if (piece[j] == '?')
            any[j / 64] |= bit;
        else
            masks[static_cast<unsigned char>(piece[j]) * words + j / 64] |= bit;
    }
    const std::uint64_t last = std::uint64_t(1) << ((m - 1) % 64);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::uint64_t* mask = &masks[static_cast<unsigned char>(text[i]) * words];
        std::uint64_t carry = 1; // a match may start at every character
        for (std::size_t w = 0; w < words; ++w) {
            const std::uint64_t next = state[w] >> 63;
            state[w] = ((state[w] << 1) | carry) & (mask[w] | any[w]);
            carry = next;
        }
        if (state[words - 1] & last)
            return i + 1 - m;
    }
    return kNone;
}

} // namespace

bool wildcardMatch(std::string_view pattern, std::string_view name)
{
    const std::size_t first = pattern.find('*');
    if (first == kNone)
        return pattern.size() == name.size() && matchesAt(pattern, name, 0);
    // Characters other than '*' each take one character of the name: a pattern with more of
    // them than the name has cannot match, which also bounds the work below by the name.
    std::size_t fixed = 0;
    for (char c : pattern)
        fixed += c != '*';
    if (fixed > name.size())
        return false;
    const std::size_t lastStar = pattern.rfind('*');
    const std::string_view head = pattern.substr(0, first), tail = pattern.substr(lastStar + 1);
    if (!matchesAt(head, name, 0) || !matchesAt(tail, name, name.size() - tail.size()))
        return false;
    // The pieces between the stars, each at its leftmost place after the one before: taking
    // the leftmost place never loses a match that a later one would give.
    std::size_t pos = head.size();
    const std::size_t end = name.size() - tail.size();
    for (std::size_t i = first + 1; i <= lastStar;) {
        const std::size_t star = pattern.find('*', i);
        const std::string_view piece = pattern.substr(i, star - i);
        i = star + 1;
        if (piece.empty())
            continue;
        if (pos > end)
            return false;
        const std::size_t found = findPiece(piece, name.substr(pos, end - pos));
        if (found == kNone)
            return false;
        pos += found + piece.size();
    }
    return pos <= end;
}

} // namespace host
