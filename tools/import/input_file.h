// A file as the importers read it: once, from its beginning on, which can be looked at beforehand.
#pragma once

#include <cstdint>
#include <filesystem>
#include <istream>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace tools {

class InputFile {
  public:
    static constexpr std::size_t headBytes = std::size_t{1} << 14;

    explicit InputFile(const std::filesystem::path& file);
    /// Text from elsewhere, of so many bytes.
    InputFile(std::unique_ptr<std::istream> stream, std::uint64_t size);

    /// The first bytes, as many as there are up to headBytes. Reading begins with them all the same.
    std::string_view head();
    /// Fills the space as far as there is something, and answers how much; 0 at the end, and after trouble.
    std::size_t read(std::span<char> space);
    /// The sentence where the file can no longer be read; empty otherwise.
    const std::string& trouble() const { return trouble_; }
    /// How much was read, from 0 to 1.
    double progress() const;

  private:
    std::size_t readStream(std::span<char> space);

    std::unique_ptr<std::istream> stream_;
    std::uint64_t size_ = 0;
    std::uint64_t read_ = 0;
    std::string head_;
    bool hasHead_ = false;
    std::string trouble_;
};

}  // namespace tools
