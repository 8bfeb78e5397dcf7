// See layout.h.
#include "win32/controls/layout.h"

#include <algorithm>

namespace tintline {
namespace {

constexpr int kGap = 6;  // pixels at 96 dpi between parts; also a splitter's width
constexpr LONG kSmallestTree = 110, kSmallestLists = 380, kSmallestPreview = 180;
constexpr LONG kSmallestList = 60;

LONG px(LONG size, const LayoutMetrics& metrics) {
  return MulDiv(static_cast<int>(size), static_cast<int>(metrics.dpi), 96);
}

RECT workArea(SIZE client, const LayoutMetrics& metrics) {
  const LONG gap = px(kGap, metrics);
  return {gap, metrics.toolBar + gap, client.cx - gap, client.cy - metrics.status - gap};
}

LONG share(double part, LONG whole) { return static_cast<LONG>(part * static_cast<double>(whole)); }

// `value` between the limits; the lower one wins where there is no room.
LONG between(LONG lower, LONG value, LONG upper) { return std::max(lower, std::min(value, upper)); }

LONG treeWidth(const RECT& work, const Division& division, const LayoutMetrics& metrics,
               bool preview) {
  const LONG others = px(kSmallestLists + (preview ? kSmallestPreview + kGap : 0), metrics);
  const LONG width = work.right - work.left - px(kGap, metrics);
  return between(px(kSmallestTree, metrics), share(division.tree, width), width - others);
}

LONG previewWidth(LONG room, const Division& division, const LayoutMetrics& metrics) {
  const LONG width = room - px(kGap, metrics);
  return between(px(kSmallestPreview, metrics), share(division.preview, width),
                 width - px(kSmallestLists, metrics));
}

LONG optionsHeight(LONG width, const LayoutMetrics& metrics) {
  return metrics.option * (width < metrics.optionsWidth ? 2 : 1);
}

// What both frames share.
LONG listsHeight(const RECT& work, LONG options, const LayoutMetrics& metrics) {
  return work.bottom - work.top - options - 2 * px(kGap, metrics);
}

// What a frame needs beside its list.
LONG frameOverhead(const LayoutMetrics& metrics) {
  return metrics.caption + metrics.button + 3 * px(kGap, metrics);
}

// The frame's list and, below it, its row of buttons.
void fillFrame(const RECT& frame, const LayoutMetrics& metrics, RECT& list, RECT& buttons) {
  const LONG gap = px(kGap, metrics) + px(2, metrics);
  list = {frame.left + gap, frame.top + metrics.caption, frame.right - gap, 0};
  buttons = {list.left, frame.bottom - gap - metrics.button, list.right, frame.bottom - gap};
  list.bottom = std::max(list.top, buttons.top - px(kGap, metrics));
}

bool holds(const RECT& area, POINT point) { return PtInRect(&area, point) != 0; }

}  // namespace

Splitter MainLayout::splitterAt(POINT point) const {
  if (holds(treeSplitter, point)) return Splitter::Tree;
  if (holds(previewSplitter, point)) return Splitter::Preview;
  if (holds(sourceSplitter, point)) return Splitter::Source;
  return Splitter::None;
}

MainLayout layOut(SIZE client, const Division& division, const LayoutMetrics& metrics,
                  bool preview) {
  const LONG gap = px(kGap, metrics);
  const RECT work = workArea(client, metrics);
  MainLayout result{};
  result.toolBar = {0, px(3, metrics), client.cx, metrics.toolBar};
  result.status = {gap, client.cy - metrics.status, client.cx - gap, client.cy};
  result.tree = {work.left, work.top, work.left + treeWidth(work, division, metrics, preview),
                 work.bottom};
  RECT lists{result.tree.right + gap, work.top, work.right, work.bottom};
  result.treeSplitter = {result.tree.right, work.top, lists.left, work.bottom};
  if (preview) {
    const LONG width = previewWidth(lists.right - lists.left, division, metrics);
    result.preview = {lists.right - width, work.top, lists.right, work.bottom};
    lists.right = result.preview.left - gap;
    result.previewSplitter = {lists.right, work.top, result.preview.left, work.bottom};
    const LONG inner = gap + px(2, metrics);
    result.browser = {result.preview.left + inner, result.preview.top + metrics.caption,
                      result.preview.right - inner, result.preview.bottom - inner};
  }

  const LONG rest = listsHeight(work, optionsHeight(lists.right - lists.left, metrics), metrics);
  const LONG smallest = frameOverhead(metrics) + px(kSmallestList, metrics);
  const LONG height = between(smallest, share(division.source, rest), rest - smallest);
  result.frame1 = {lists.left, lists.top, lists.right, lists.top + height};
  result.options = {lists.left, result.frame1.bottom + gap, lists.right,
                    result.frame1.bottom + gap + optionsHeight(lists.right - lists.left, metrics)};
  result.frame2 = {lists.left, result.options.bottom + gap, lists.right, lists.bottom};
  result.sourceSplitter = {lists.left, result.frame1.bottom, lists.right, result.frame2.top};
  fillFrame(result.frame1, metrics, result.list1, result.buttons1);
  fillFrame(result.frame2, metrics, result.list2, result.buttons2);
  return result;
}

Division moved(Splitter splitter, POINT point, SIZE client, const Division& division,
               const LayoutMetrics& metrics, bool preview) {
  const LONG gap = px(kGap, metrics), half = gap / 2;
  const RECT work = workArea(client, metrics);
  const MainLayout now = layOut(client, division, metrics, preview);
  const auto part = [](LONG size, LONG whole) {
    return static_cast<double>(size) / static_cast<double>(std::max(whole, 1L));
  };
  Division result = division;
  if (splitter == Splitter::Tree)
    result.tree = part(point.x - half - work.left, work.right - work.left - gap);
  if (splitter == Splitter::Preview)
    result.preview = part(work.right - half - point.x, work.right - now.tree.right - 2 * gap);
  if (splitter == Splitter::Source)
    result.source = part(point.y - half - work.top,
                         listsHeight(work, now.options.bottom - now.options.top, metrics));
  return result;
}

}  // namespace tintline
