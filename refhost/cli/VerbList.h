// The tool's verbs, one line each: REFHOST_VERB(function) where the verb's own file defines
//   void function(CLI::App& app, refhost::cli::Tool& tool);
// which adds its subcommand to `app`. Order here is the order in --help.
REFHOST_VERB(addExportVerb)
REFHOST_VERB(addCommandVerb)
REFHOST_VERB(addSettingsVerb)
REFHOST_VERB(addEffectVerb)
REFHOST_VERB(addPlayVerb)
REFHOST_VERB(addConvertModeVerb)
REFHOST_VERB(addResampleVerb)
REFHOST_VERB(addClientDemoVerb)
REFHOST_VERB(addInfoVerb)
REFHOST_VERB(addPluginInfoVerb)
