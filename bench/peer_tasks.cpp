// The peers read from memory, which costs them no system call and no copy that they do not make
// themselves.
#include "bench/files.h"
#include "bench/tasks.h"

#include <cstdlib>
#include <cstring>
#include <expat.h>
#include <libxml/parser.h>
#include <pugixml.hpp>
#include <string>

namespace {

struct Peers {
    std::string path;
    std::string bytes;
    std::string scratch;  // for the parser that works in place
    pugi::xml_document document;
    uint32_t cells;
    uint64_t characters;
};

Peers peers;

void prepare(const char *path) {
    peers.path = std::string(path) + ".xml";
    peers.bytes = read_as_xml(path);
    peers.scratch = peers.bytes;
    peers.document.reset();
}

void no_clear() {}

uint32_t cells_counted() {
    return peers.cells;
}

[[noreturn]] void fail(const char *message) {
    fprintf(stderr, "%s\n", message);
    exit(2);
}

void count_element(const char *name) {
    peers.cells += strcmp(name, "cell") == 0 ? 1U : 0U;
}

// ---- expat --------------------------------------------------------------------------------------

void XMLCALL expat_start(void *, const XML_Char *name, const XML_Char **) {
    count_element(name);
}

void XMLCALL expat_end(void *, const XML_Char *) {}

void XMLCALL expat_characters(void *, const XML_Char *, int length) {
    peers.characters += static_cast<uint64_t>(length);
}

void expat_run() {
    peers.cells = 0;
    XML_Parser parser = XML_ParserCreate("UTF-8");
    XML_SetElementHandler(parser, expat_start, expat_end);
    XML_SetCharacterDataHandler(parser, expat_characters);
    if (XML_Parse(parser, peers.bytes.data(), static_cast<int>(peers.bytes.size()), XML_TRUE) !=
        XML_STATUS_OK) {
        fail("expat refuses the web");
    }
    XML_ParserFree(parser);
}

// ---- libxml2 ------------------------------------------------------------------------------------

void libxml2_start(void *, const xmlChar *name, const xmlChar **) {
    count_element(reinterpret_cast<const char *>(name));
}

void libxml2_end(void *, const xmlChar *) {}

void libxml2_characters(void *, const xmlChar *, int length) {
    peers.characters += static_cast<uint64_t>(length);
}

void libxml2_run() {
    peers.cells = 0;
    xmlSAXHandler handler = {};
    handler.startElement = libxml2_start;
    handler.endElement = libxml2_end;
    handler.characters = libxml2_characters;
    if (xmlSAXUserParseMemory(&handler, nullptr, peers.bytes.data(),
                              static_cast<int>(peers.bytes.size())) != 0) {
        fail("libxml2 refuses the web");
    }
}

// ---- pugixml ------------------------------------------------------------------------------------

uint32_t pugixml_cells() {
    uint32_t count = 0;
    for (pugi::xml_node cell : peers.document.child("eof").children("cell")) {
        count += cell.child("cname").empty() ? 0U : 1U;
    }
    return count;
}

void pugixml_run() {
    if (!peers.document.load_file(peers.path.c_str())) {
        fail("pugixml refuses the web");
    }
}

void pugixml_clear() {
    peers.document.reset();
}

void pugixml_run_in_place() {
    if (!peers.document.load_buffer_inplace(peers.scratch.data(), peers.scratch.size(),
                                            pugi::parse_default, pugi::encoding_utf8)) {
        fail("pugixml refuses the web");
    }
}

void pugixml_clear_in_place() {
    peers.document.reset();
    peers.scratch = peers.bytes;
}

void pugixml_prepare_save(const char *path) {
    prepare(path);
    pugixml_run();
}

void pugixml_save() {
    if (!peers.document.save_file(k_sink, "", pugi::format_raw)) {
        fail("pugixml cannot save the web");
    }
}

constexpr Task k_tasks[] = {
    {"read_expat", "expat: events, counted", prepare, expat_run, no_clear, cells_counted},
    {"read_libxml2", "libxml2 SAX: events, counted", prepare, libxml2_run, no_clear, cells_counted},
    {"read_pugixml", "pugixml: a DOM, of a copy that it makes", prepare, pugixml_run, pugixml_clear,
     pugixml_cells},
    {"read_pugixml_in_place", "pugixml: a DOM within the bytes, which it overwrites", prepare,
     pugixml_run_in_place, pugixml_clear_in_place, pugixml_cells},
    {"save_pugixml", "pugixml: the DOM, unformatted", pugixml_prepare_save, pugixml_save, no_clear,
     pugixml_cells},
};

}  // namespace

std::span<const Task> peer_tasks() {
    return k_tasks;
}
