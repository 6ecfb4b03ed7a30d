#include "engine/ui/long_choice.h"

#ifdef __WXGTK__

// The library's headers need not be there where those of wxWidgets are.
extern "C" {
void* gtk_css_provider_new();
int gtk_css_provider_load_from_data(void* provider, const char* text, long length, void** error);
void* gtk_widget_get_style_context(GtkWidget* widget);
void gtk_style_context_add_provider(void* context, void* provider, unsigned priority);
void g_signal_emit_by_name(void* object, const char* signal, ...);
void g_object_unref(void* object);
}

namespace tarn {

void ReadyForManyChoices(wxComboBox& box) {
  constexpr unsigned kOfApplication = 600;
  void* style = gtk_css_provider_new();
  gtk_css_provider_load_from_data(style, "* { -GtkComboBox-appears-as-list: true; }", -1, nullptr);
  GtkWidget* widget = box.GetHandle();
  gtk_style_context_add_provider(gtk_widget_get_style_context(widget), style, kOfApplication);
  // The context keeps it.
  g_object_unref(style);
  // Else it would be looked at when the box is shown, with all choices in their menu.
  g_signal_emit_by_name(widget, "style-updated");
}

}  // namespace tarn

#else

namespace tarn {

void ReadyForManyChoices(wxComboBox&) {}

}  // namespace tarn

#endif
