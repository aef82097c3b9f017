#include "sys/win32/win32_html_document.h"

#include <mshtml.h>
#include <oleacc.h>

#include "sys/win32/com_ptr.h"
#include "sys/win32/wide.h"
#include "sys/win32/win32_windows.h"

namespace kx::win32 {

namespace {

constexpr UINT kAnswerMs = 1000;

// A BSTR owned for the scope.
class Bstr {
 public:
  Bstr() = default;
  explicit Bstr(std::string_view text) : s_(::SysAllocString(Widen(text).c_str())) {}
  ~Bstr() { ::SysFreeString(s_); }
  Bstr(const Bstr&) = delete;
  Bstr& operator=(const Bstr&) = delete;
  BSTR get() const { return s_; }
  BSTR* put() {
    ::SysFreeString(s_);
    s_ = nullptr;
    return &s_;
  }
  std::string Text() const { return s_ ? Narrow(std::wstring_view(s_, ::SysStringLen(s_))) : ""; }

 private:
  BSTR s_ = nullptr;
};

// A VARIANT cleared at the end of the scope.
class Variant {
 public:
  Variant() { ::VariantInit(&v_); }
  explicit Variant(long n) : Variant() {
    v_.vt = VT_I4;
    v_.lVal = n;
  }
  ~Variant() { ::VariantClear(&v_); }
  Variant(const Variant&) = delete;
  Variant& operator=(const Variant&) = delete;
  VARIANT* get() { return &v_; }
  std::string Text() {
    if (V_VT(&v_) == VT_BSTR && V_BSTR(&v_))
      return Narrow(std::wstring_view(V_BSTR(&v_), ::SysStringLen(V_BSTR(&v_))));
    return "";
  }

 private:
  VARIANT v_;
};

com_ptr<IHTMLElement> ItemOf(IHTMLElementCollection* collection, std::size_t index) {
  com_ptr<IDispatch> item;
  Variant at(static_cast<long>(index));
  Variant zero(0);
  if (!collection || FAILED(collection->item(*at.get(), *zero.get(), item.put())) || !item)
    return {};
  return item.as<IHTMLElement>();
}

std::string Attribute(IHTMLElement* element, std::string_view name) {
  Variant value;
  Bstr attribute(name);
  if (FAILED(element->getAttribute(attribute.get(), 0, value.get()))) return "";
  return value.Text();
}

class HtmlDocument final : public PageDocument {
 public:
  explicit HtmlDocument(com_ptr<IHTMLDocument2> document) : document_(std::move(document)) {}

  std::string ReadyState() override {
    Bstr state;
    if (FAILED(document_->get_readyState(state.put()))) return "";
    return state.Text();
  }

  std::optional<std::vector<PageElement>> Elements() override {
    const auto all = All();
    if (!all) return std::nullopt;
    long length = 0;
    if (FAILED(all->get_length(&length))) return std::nullopt;
    std::vector<PageElement> out;
    for (long i = 0; i < length; ++i) {
      PageElement e;
      if (const auto element = ItemOf(all.get(), static_cast<std::size_t>(i))) {
        Bstr tag;
        if (SUCCEEDED(element->get_tagName(tag.put()))) e.tag = tag.Text();
        e.type = Attribute(element.get(), "type");
        e.name = Attribute(element.get(), "name");
        e.value = Attribute(element.get(), "value");
        if (const auto input = element.as<IHTMLInputElement>()) {
          VARIANT_BOOL checked = VARIANT_FALSE;
          if (SUCCEEDED(input->get_checked(&checked))) e.checked = checked != VARIANT_FALSE;
          Bstr value;
          if (SUCCEEDED(input->get_value(value.put()))) e.value = value.Text();
        } else if (const auto area = element.as<IHTMLTextAreaElement>()) {
          Bstr value;
          if (SUCCEEDED(area->get_value(value.put()))) e.value = value.Text();
        } else if (const auto select = element.as<IHTMLSelectElement>()) {
          Bstr value;
          if (SUCCEEDED(select->get_value(value.put()))) e.value = value.Text();
        }
      }
      out.push_back(std::move(e));
    }
    return out;
  }

  bool SetValue(std::size_t index, std::string_view value) override {
    const auto element = ItemOf(All().get(), index);
    if (!element) return false;
    Bstr text(value);
    if (const auto input = element.as<IHTMLInputElement>())
      return SUCCEEDED(input->put_value(text.get()));
    if (const auto area = element.as<IHTMLTextAreaElement>())
      return SUCCEEDED(area->put_value(text.get()));
    if (const auto select = element.as<IHTMLSelectElement>())
      return SUCCEEDED(select->put_value(text.get()));
    return false;
  }

  bool SetChecked(std::size_t index, bool checked) override {
    const auto input = ItemOf(All().get(), index).as<IHTMLInputElement>();
    return input && SUCCEEDED(input->put_checked(checked ? VARIANT_TRUE : VARIANT_FALSE));
  }

  bool SubmitForm(std::size_t index) override {
    com_ptr<IHTMLElementCollection> forms;
    if (FAILED(document_->get_forms(forms.put())) || !forms) return false;
    const auto form = ItemOf(forms.get(), index).as<IHTMLFormElement>();
    return form && SUCCEEDED(form->submit());
  }

  bool SubmitFormOf(std::size_t index) override {
    const auto element = ItemOf(All().get(), index);
    com_ptr<IHTMLFormElement> form;
    if (const auto input = element.as<IHTMLInputElement>())
      input->get_form(form.put());
    else if (const auto area = element.as<IHTMLTextAreaElement>())
      area->get_form(form.put());
    else if (const auto select = element.as<IHTMLSelectElement>())
      select->get_form(form.put());
    return form && SUCCEEDED(form->submit());
  }

 private:
  com_ptr<IHTMLElementCollection> All() {
    com_ptr<IHTMLElementCollection> all;
    if (FAILED(document_->get_all(all.put()))) return {};
    return all;
  }

  // Declared first: COM stays entered until the document is released.
  ComApartment apartment_;
  com_ptr<IHTMLDocument2> document_;
};

}  // namespace

std::unique_ptr<PageDocument> HtmlDocumentOfWindow(WindowHandle window) {
  const UINT message = ::RegisterWindowMessageA("WM_HTML_GETOBJECT");
  if (message == 0) return nullptr;
  DWORD_PTR result = 0;
  if (!::SendMessageTimeoutA(ToHwnd(window), message, 0, 0, SMTO_ABORTIFHUNG, kAnswerMs, &result) ||
      result == 0)
    return nullptr;
  ComApartment apartment;
  com_ptr<IHTMLDocument2> document;
  if (FAILED(::ObjectFromLresult(static_cast<LRESULT>(result), IID_IHTMLDocument2, 0,
                                 reinterpret_cast<void**>(document.put()))) ||
      !document)
    return nullptr;
  return std::make_unique<HtmlDocument>(std::move(document));
}

}  // namespace kx::win32
