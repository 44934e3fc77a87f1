#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace velmora::test {

struct TextCase {
  std::string Given;
  std::string Wanted;
};

/// A multipart of parts, each given with its header and its text. `subtype` may have parameters behind it.
inline std::string multipart(const std::vector<std::string>& parts, const std::string& subtype = "mixed") {
  std::size_t size = 0;
  for (const std::string& part : parts) size += part.size();
  // Other than that of any part.
  const std::string boundary = "b " + std::to_string(size);
  std::string message = "Content-Type: multipart/" + subtype + "; boundary=\"" + boundary + "\"\r\n\r\npreamble\r\n";
  for (const std::string& part : parts) message += "--" + boundary + "\r\n" + part + "\r\n";
  return message + "--" + boundary + "--\r\nepilogue\r\n";
}

/// `header` is a value of Content-Type, with other fields behind it.
inline std::string part(const std::string& header, const std::string& text) {
  return "Content-Type: " + header + "\r\n\r\n" + text;
}

}  // namespace velmora::test
