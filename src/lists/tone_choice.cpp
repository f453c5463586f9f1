#include "lists/tone_choice.h"

#include <initializer_list>

namespace q40 {
namespace {

using Kind = ToneItem::Kind;

struct Source {
  const ToneItem& item;
  Meaning column;
};

class Choice {
 public:
  explicit Choice(const ToneRow& row) : row_(row) { choice_.kind = "None"; }

  ToneChoice Make() {
    if (!row_.kind) {
      WithoutKind();
    } else if (*row_.kind == ToneKind::kSent) {
      Sent(Pick({sent_, both_}));
    } else if (*row_.kind == ToneKind::kSquelch) {
      Squelch(Pick({both_, sent_, heard_}), Pick({both_, heard_, sent_}));
    } else if (*row_.kind == ToneKind::kDcs) {
      Dcs(Pick({dcs_sent_, dcs_both_, Coded(sent_), Coded(both_), dcs_heard_}),
          Pick({dcs_heard_, dcs_both_, Coded(heard_), dcs_sent_, Coded(sent_), Coded(both_)}));
    }
    return std::move(choice_);
  }

 private:
  // The first that says something.
  static Source Pick(std::initializer_list<Source> sources) {
    for (const Source& source : sources) {
      if (!source.item.Is(Kind::kNone)) return source;
    }
    return *sources.begin();
  }
  // Of a column of tones only a code counts here.
  static Source Coded(const Source& source) {
    static const ToneItem kNothing;
    return source.item.Is(Kind::kDcs) ? source : Source{kNothing, source.column};
  }

  void Tell(Meaning column, std::string why) { choice_.unfit.push_back({column, std::move(why)}); }

  // Whether the source is of the kind that is needed; says why not.
  bool Is(const Source& source, Kind kind) {
    if (source.item.Is(kind)) return true;
    const std::string kind_text = kind == Kind::kDcs ? "DCS code" : "CTCSS tone";
    if (source.item.Is(Kind::kUnfit)) {
      Tell(source.column, source.item.text);
    } else if (source.item.Is(Kind::kNone)) {
      Tell(Meaning::kToneKind, "the row has no " + kind_text + " for it.");
    } else {
      Tell(source.column, source.item.text + " is no " + kind_text + '.');
    }
    return false;
  }

  void Sent(const Source& sent) {
    if (!Is(sent, Kind::kCtcss)) return;
    choice_.kind = "Tone";
    choice_.tx_tone = sent.item.text;
  }

  void Squelch(const Source& sent, const Source& heard) {
    if (!Is(sent, Kind::kCtcss) || !Is(heard, Kind::kCtcss)) return;
    choice_.kind = "TSQ";
    choice_.tx_tone = sent.item.text;
    choice_.rx_tone = heard.item.text;
  }

  void Dcs(const Source& sent, const Source& heard) {
    if (!Is(sent, Kind::kDcs) || !Is(heard, Kind::kDcs)) return;
    choice_.kind = "DCS";
    choice_.tx_dcs = sent.item.text;
    choice_.rx_dcs = heard.item.text;
  }

  void WithoutKind() {
    Source sent = Pick({sent_, both_, dcs_sent_, dcs_both_});
    Source heard = Pick({heard_, both_, dcs_heard_, dcs_both_});
    if (sent.item.Is(Kind::kUnfit)) Tell(sent.column, sent.item.text);
    if (heard.item.Is(Kind::kUnfit) && heard.column != sent.column) {
      Tell(heard.column, heard.item.text);
    }
    if (sent.item.Is(Kind::kCtcss)) {
      WithTone(sent, heard);
    } else if (sent.item.Is(Kind::kDcs)) {
      WithCode(sent, heard);
    } else if (heard.item.Is(Kind::kCtcss) || heard.item.Is(Kind::kDcs)) {
      Tell(heard.column, heard.item.text + " is only heard; the radio would send it too.");
    }
  }

  void WithTone(const Source& sent, const Source& heard) {
    if (heard.item.Is(Kind::kCtcss)) return Squelch(sent, heard);
    Sent(sent);
    const Source code = Pick({dcs_sent_, dcs_heard_, dcs_both_});
    if (!code.item.Is(Kind::kDcs) && !heard.item.Is(Kind::kDcs)) return;
    Tell(heard.item.Is(Kind::kDcs) ? heard.column : code.column,
         "left out: the channel has the CTCSS tone " + sent.item.text + '.');
  }

  void WithCode(const Source& sent, const Source& heard) {
    if (heard.item.Is(Kind::kCtcss)) {
      Tell(heard.column,
           heard.item.text + " cannot be heard where the DCS code " + sent.item.text + " is sent.");
      return;
    }
    const bool alone = !heard.item.Is(Kind::kDcs);
    Dcs(sent, alone ? sent : heard);
    if (alone) Tell(sent.column, sent.item.text + " is heard too: DCS works both ways.");
  }

  const ToneRow& row_;
  Source sent_{row_.sent, Meaning::kToneSent};
  Source heard_{row_.heard, Meaning::kToneHeard};
  Source both_{row_.both, Meaning::kToneBoth};
  Source dcs_sent_{row_.dcs_sent, Meaning::kDcsSent};
  Source dcs_heard_{row_.dcs_heard, Meaning::kDcsHeard};
  Source dcs_both_{row_.dcs_both, Meaning::kDcsBoth};
  ToneChoice choice_;
};

}  // namespace

ToneChoice ChooseTone(const ToneRow& row) { return Choice(row).Make(); }

}  // namespace q40
