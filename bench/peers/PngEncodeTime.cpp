// Times the PNG encoding of an existing PNG's pixels, so that the encoding share of a whole
// command (ours or a peer's) can be told apart from its rasterizing. The image is decoded once,
// then encoded into memory RUNS times with libpng; prints "best_ms bytes", the least CPU time of
// this process for one encoding (the machine may be shared, so wall time would count waiting).
//
// Usage: png_encode_time FILE [--level N] [--filter all|none|sub|up|avg|paeth] [--strategy default|filtered|rle]
//                        [--runs N]
// Without options the settings are libpng's defaults (zlib level 6, adaptive filtering over all
// five filters), which is what cairo's PNG writer, and so rsvg-convert, uses.
#include <png.h>
#include <zlib.h>

#include <algorithm>
#include <csetjmp>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <time.h>
#include <vector>

namespace {

struct Image {
  png_uint_32 width = 0, height = 0;
  int bitDepth = 8, colorType = 0;
  std::size_t rowBytes = 0;
  std::vector<png_byte> pixels;
  std::vector<png_bytep> rows;
};

bool readPng(const char* path, Image& image) {
  std::FILE* f = std::fopen(path, "rb");
  if (!f) return false;
  png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png ? png_create_info_struct(png) : nullptr;
  if (!info || setjmp(png_jmpbuf(png))) {
    png_destroy_read_struct(&png, info ? &info : nullptr, nullptr);
    std::fclose(f);
    return false;
  }
  png_init_io(png, f);
  png_read_info(png, info);
  image.width = png_get_image_width(png, info);
  image.height = png_get_image_height(png, info);
  image.bitDepth = png_get_bit_depth(png, info);
  image.colorType = png_get_color_type(png, info);
  image.rowBytes = png_get_rowbytes(png, info);
  image.pixels.resize(image.rowBytes * image.height);
  image.rows.resize(image.height);
  for (png_uint_32 y = 0; y < image.height; ++y) image.rows[y] = image.pixels.data() + y * image.rowBytes;
  png_read_image(png, image.rows.data());
  png_read_end(png, nullptr);
  png_destroy_read_struct(&png, &info, nullptr);
  std::fclose(f);
  return true;
}

struct Settings {
  int level = -1;  // libpng's default
  int filters = -1;
  int strategy = -1;
};

double cpuMilliseconds() {
  timespec t{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
  return static_cast<double>(t.tv_sec) * 1e3 + static_cast<double>(t.tv_nsec) / 1e6;
}

void countBytes(png_structp png, png_bytep, png_size_t n) { *static_cast<std::size_t*>(png_get_io_ptr(png)) += n; }
void noFlush(png_structp) {}

// Returns the encoded size, 0 on failure.
std::size_t encode(const Image& image, const Settings& s) {
  std::size_t bytes = 0;
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png ? png_create_info_struct(png) : nullptr;
  if (!info || setjmp(png_jmpbuf(png))) {
    png_destroy_write_struct(&png, info ? &info : nullptr);
    return 0;
  }
  png_set_write_fn(png, &bytes, countBytes, noFlush);
  png_set_IHDR(png, info, image.width, image.height, image.bitDepth, image.colorType, PNG_INTERLACE_NONE,
               PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  if (s.level >= 0) png_set_compression_level(png, s.level);
  if (s.filters >= 0) png_set_filter(png, PNG_FILTER_TYPE_BASE, s.filters);
  if (s.strategy >= 0) png_set_compression_strategy(png, s.strategy);
  png_write_info(png, info);
  png_write_image(png, const_cast<png_bytepp>(image.rows.data()));
  png_write_end(png, info);
  png_destroy_write_struct(&png, &info);
  return bytes;
}

int filterBits(const std::string& name) {
  if (name == "all") return PNG_ALL_FILTERS;
  if (name == "none") return PNG_FILTER_NONE;
  if (name == "sub") return PNG_FILTER_SUB;
  if (name == "up") return PNG_FILTER_UP;
  if (name == "avg") return PNG_FILTER_AVG;
  if (name == "paeth") return PNG_FILTER_PAETH;
  return -2;
}

int strategyOf(const std::string& name) {
  if (name == "default") return Z_DEFAULT_STRATEGY;
  if (name == "filtered") return Z_FILTERED;
  if (name == "rle") return Z_RLE;
  return -2;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: %s FILE [--level N] [--filter NAME] [--strategy NAME] [--runs N]\n", argv[0]);
    return 2;
  }
  Settings s;
  int runs = 3;
  for (int i = 2; i + 1 < argc; i += 2) {
    const std::string option = argv[i], value = argv[i + 1];
    if (option == "--level")
      s.level = std::atoi(value.c_str());
    else if (option == "--filter")
      s.filters = filterBits(value);
    else if (option == "--strategy")
      s.strategy = strategyOf(value);
    else if (option == "--runs")
      runs = std::max(1, std::atoi(value.c_str()));
    else
      s.filters = -2;
    if (s.filters == -2 || s.strategy == -2) {
      std::fprintf(stderr, "%s: bad option %s %s\n", argv[0], option.c_str(), value.c_str());
      return 2;
    }
  }
  Image image;
  if (!readPng(argv[1], image)) {
    std::fprintf(stderr, "%s: cannot read %s\n", argv[0], argv[1]);
    return 1;
  }
  double best = 1e300;
  std::size_t bytes = 0;
  for (int r = 0; r < runs; ++r) {
    const double start = cpuMilliseconds();
    bytes = encode(image, s);
    const double took = cpuMilliseconds() - start;
    if (bytes == 0) {
      std::fprintf(stderr, "%s: encoding failed\n", argv[0]);
      return 1;
    }
    best = std::min(best, took);
  }
  std::printf("%.1f %zu\n", best, bytes);
  return 0;
}
