#include "tests/bad_input/BadFiles.h"

#include <cstdint>
#include <fstream>
#include <stdexcept>

namespace bad_input {

namespace {

uint32_t crc32(const std::string& bytes) {
  uint32_t crc = 0xFFFFFFFFu;
  for (unsigned char byte : bytes) {
    crc ^= byte;
    for (int bit = 0; bit < 8; ++bit) crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1u)));
  }
  return ~crc;
}

void bigEndian(std::string& out, uint32_t v) {
  for (int shift = 24; shift >= 0; shift -= 8) out.push_back(char((v >> shift) & 0xFF));
}

void littleEndian(std::string& out, uint32_t v, int bytes) {
  for (int i = 0; i < bytes; ++i) out.push_back(char((v >> (8 * i)) & 0xFF));
}

void pngChunk(std::string& out, const std::string& type, const std::string& data) {
  bigEndian(out, uint32_t(data.size()));
  out += type + data;
  bigEndian(out, crc32(type + data));
}

std::string pngHeader(uint32_t width, uint32_t height) {
  std::string png = "\x89PNG\r\n\x1a\n";
  std::string ihdr;
  bigEndian(ihdr, width);
  bigEndian(ihdr, height);
  ihdr += std::string("\x08\x02\x00\x00\x00", 5);  // 8-bit RGB, deflate, no filter, no interlace
  pngChunk(png, "IHDR", ihdr);
  return png;
}

void tiffEntry(std::string& out, uint16_t tag, uint16_t type, uint32_t value) {
  littleEndian(out, tag, 2);
  littleEndian(out, type, 2);
  littleEndian(out, 1, 4);
  littleEndian(out, value, 4);
}

}  // namespace

void writeFile(const std::string& path, const std::string& bytes) {
  std::ofstream out(path, std::ios::binary);
  out.write(bytes.data(), std::streamsize(bytes.size()));
  if (!out) throw std::runtime_error("cannot write " + path);
}

std::string smallPng() {
  std::string png = pngHeader(2, 2);
  // zlib stream of two rows, filter 0, six zero bytes each: stored (uncompressed) deflate block.
  std::string raw(14, '\0');
  std::string idat = "\x78\x01";
  idat += '\x01';
  littleEndian(idat, uint32_t(raw.size()), 2);
  littleEndian(idat, uint32_t(~raw.size() & 0xFFFF), 2);
  idat += raw;
  uint32_t a = 1, b = 0;
  for (unsigned char c : raw) a = (a + c) % 65521, b = (b + a) % 65521;
  bigEndian(idat, (b << 16) | a);
  pngChunk(png, "IDAT", idat);
  pngChunk(png, "IEND", "");
  return png;
}

std::string pngClaiming(uint32_t width, uint32_t height) { return pngHeader(width, height); }

std::string tiffClaiming(uint32_t width, uint32_t height) {
  std::string tiff = "II*";
  tiff.push_back('\0');
  littleEndian(tiff, 8, 4);  // the first directory follows the header
  const uint16_t entries = 9;
  const uint32_t dataOffset = 8 + 2 + entries * 12 + 4;
  littleEndian(tiff, entries, 2);
  tiffEntry(tiff, 256, 4, width);       // ImageWidth
  tiffEntry(tiff, 257, 4, height);      // ImageLength
  tiffEntry(tiff, 258, 3, 8);           // BitsPerSample
  tiffEntry(tiff, 259, 3, 1);           // no compression
  tiffEntry(tiff, 262, 3, 1);           // black is zero
  tiffEntry(tiff, 273, 4, dataOffset);  // StripOffsets
  tiffEntry(tiff, 277, 3, 1);           // SamplesPerPixel
  tiffEntry(tiff, 278, 4, height);      // RowsPerStrip
  tiffEntry(tiff, 279, 4, 1);           // StripByteCounts
  littleEndian(tiff, 0, 4);             // no further directory
  tiff.push_back('\x7f');
  return tiff;
}

std::string smallTiff() {
  std::string tiff = tiffClaiming(2, 2);
  // Four pixels instead of one byte: patch StripByteCounts (the last entry's value).
  const size_t countValue = 8 + 2 + 8 * 12 + 8;
  tiff[countValue] = 4;
  return tiff + std::string(3, '\x20');
}

std::string billionLaughsSvg() {
  std::string svg = "<?xml version=\"1.0\"?>\n<!DOCTYPE svg [\n<!ENTITY a0 \"lol\">\n";
  for (int i = 1; i <= 9; ++i) {
    svg += "<!ENTITY a" + std::to_string(i) + " \"";
    for (int k = 0; k < 10; ++k) svg += "&a" + std::to_string(i - 1) + ";";
    svg += "\">\n";
  }
  svg += "]>\n<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"10\" height=\"10\">"
         "<text x=\"1\" y=\"9\">&a9;</text><rect id=\"&a9;\" width=\"5\" height=\"5\"/></svg>\n";
  return svg;
}

std::string deeplyNestedSvg(size_t depth) {
  std::string svg = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"10\" height=\"10\">";
  for (size_t i = 0; i < depth; ++i) svg += "<g>";
  svg += "<rect width=\"5\" height=\"5\"/>";
  for (size_t i = 0; i < depth; ++i) svg += "</g>";
  return svg + "</svg>\n";
}

std::string useCycleSvg() {
  return "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" width=\"10\" "
         "height=\"10\"><g id=\"a\"><rect width=\"2\" height=\"2\"/><use xlink:href=\"#b\"/></g>"
         "<g id=\"b\"><use href=\"#a\" x=\"1\"/></g><use href=\"#a\"/></svg>\n";
}

std::string giantPathSvg(size_t points) {
  std::string d = "M0 0";
  d.reserve(points * 3 + 8);
  for (size_t i = 0; i < points; ++i) d += (i % 2) ? "v1" : "h1";
  return "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"10\" height=\"10\"><path d=\"" + d + "\"/></svg>\n";
}

std::string deeplyNestedJson(size_t depth) {
  return "{\"format\": " + std::string(depth, '[') + std::string(depth, ']') + "}\n";
}

}  // namespace bad_input
