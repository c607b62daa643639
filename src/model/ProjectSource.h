#pragma once

#include <cstddef>
#include <filesystem>
#include <span>
#include <string_view>
#include <vector>

namespace genvara {

/// Bytes of a project, in pieces.
class ByteSource {
  public:
    ByteSource() = default;
    virtual ~ByteSource() = default;
    ByteSource(const ByteSource&) = delete;
    ByteSource& operator=(const ByteSource&) = delete;
    ByteSource(ByteSource&&) = delete;
    ByteSource& operator=(ByteSource&&) = delete;

    /// Fills the buffer from its start; the number of bytes, 0 at the end and where reading fails.
    [[nodiscard]] virtual std::size_t Read(std::span<char> buffer) = 0;
};

/// A file on disk.
class FileSource final : public ByteSource {
  public:
    /// @throws RaisedError 53 for a missing file, else the system's number (a folder counts as unreadable),
    ///         from `source`, with one sentence that names the file.
    FileSource(const std::filesystem::path& file, std::string_view source);
    ~FileSource() override;
    FileSource(const FileSource&) = delete;
    FileSource& operator=(const FileSource&) = delete;
    FileSource(FileSource&&) = delete;
    FileSource& operator=(FileSource&&) = delete;

    [[nodiscard]] std::size_t Read(std::span<char> buffer) override;

  private:
    int m_descriptor = -1;
};

/// The bytes of another source, whose first ones can be looked at before they are read.
class PeekedSource final : public ByteSource {
  public:
    /// The other source outlives this one.
    explicit PeekedSource(ByteSource& source);

    /// The first byte that is no blank, if it stands near the beginning; 0 otherwise.
    [[nodiscard]] char FirstMark() const noexcept;
    [[nodiscard]] std::size_t Read(std::span<char> buffer) override;

  private:
    ByteSource* m_source;
    std::vector<char> m_head;
    std::size_t m_next = 0;
};

/// Bytes that lie in memory and outlive the source.
class MemorySource final : public ByteSource {
  public:
    explicit MemorySource(std::string_view bytes) : m_bytes(bytes) {}

    [[nodiscard]] std::size_t Read(std::span<char> buffer) override;

  private:
    std::string_view m_bytes;
};

}  // namespace genvara
