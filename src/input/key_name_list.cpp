#include "input/key_name_list.h"

#include "input/input_lines.h"
#include "input/key_names.h"

namespace kx {

namespace {

constexpr std::string_view kEol = "\r\n";
constexpr std::string_view kEntryIndent = "  ";

void Line(std::string& out, std::string_view text) {
  out.append(text).append(kEol);
}

template <typename List>
void Entries(std::string& out, const List& entries) {
  for (const auto& e : entries) out.append(kEntryIndent).append(e).append(kEol);
  out.append(kEol);
}

}  // namespace

std::string KeyNameListText(std::string_view version) {
  std::string out;
  Line(out, std::string("Kestrelix 操作記録名一覧 (バージョン ").append(version).append(")"));
  Line(out, "");
  Line(out, "記録したマクロに書かれるキー名と、再生で読めるキー名・マウス行の一覧です。");
  Line(out, "再生では大文字と小文字を区別しません (LCtrl Down と lctrl down は同じです)。");
  Line(out, "");
  Line(out, "■ 記録で書かれるキー名");
  Line(out, "記録中に押したキーは次の名前で 1 行ずつ書かれます。");
  Entries(out, RecordedKeyNames());
  Line(out, "■ 再生で読めるキー名");
  Line(out, "1 行にキー名だけを書くとそのキーを押して離します。keys ctrl+c のように");
  Line(out, "+ でつなぐと同時押しになります。Down/Up の付いた名前は押したまま/離すだけです。");
  Entries(out, PlayTableWords());
  Line(out, "■ 番号付きのキー名 (テンキーとファンクションキー)");
  Entries(out, PlayNumberedWords());
  Line(out, "このほか、1 文字だけの行 (a や 5 など) はその文字のキーを押します。");
  Line(out, "");
  Line(out, "■ マウス行");
  Line(out, "x と y は座標 (数字、空白なし) です。Mouse は画面座標、MouCl は最前面の");
  Line(out, "ウィンドウのクライアント座標です。(x,y) を省くと今のマウス位置でクリックします。");
  Line(out, "MousePos c は画面中央へ、MousePos s は再生開始時の位置へ移動します。");
  Line(out, "Wheel n は n だけホイールを回します (120 で上へ 1 目盛り、-120 で下へ)。");
  Entries(out, MouseLineForms());
  return out;
}

}  // namespace kx
