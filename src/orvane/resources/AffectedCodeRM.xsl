<?xml version="1.0" encoding="UTF-8"?>
<!-- The look of the affected code report: heads, source lines with their numbers, gaps. -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:output method="html" encoding="UTF-8" indent="no"/>

  <xsl:template match="/REPORT">
    <html>
      <head>
        <meta charset="UTF-8"/>
        <meta name="viewport" content="width=device-width, initial-scale=1"/>
        <title><xsl:value-of select="@TITLE"/></title>
        <style>
          :root { color-scheme: light dark; --line: #e3e6eb; --soft: #f4f6f9; --ink: #1d2430; --faint: #8a93a1; --paper: #fff; --mark: #fff3d6; }
          @media (prefers-color-scheme: dark) { :root { --line: #2d333d; --soft: #232933; --ink: #dfe4eb; --faint: #7d8796; --paper: #181c23; --mark: #3f371f; } }
          body { font: 14px/1.45 system-ui, sans-serif; color: var(--ink); background: var(--paper); margin: 2rem auto; max-width: 78rem; padding: 0 1rem; }
          h1 { font-size: 1.5rem; margin: 0 0 .2rem; } .when { color: var(--faint); margin: 0 0 1rem; }
          .wide { overflow-x: auto; } table { border-collapse: collapse; min-width: 60rem; }
          th { text-align: left; color: var(--faint); font-weight: normal; white-space: nowrap; padding: 0 .8rem .3rem 0; }
          td { padding: 0; } td.no { color: var(--faint); text-align: right; padding-right: 1rem; font: 12px ui-monospace, monospace; user-select: none; }
          td.code { font: 13px/1.4 ui-monospace, monospace; white-space: pre; width: 100%; }
          td.code b { background: var(--mark); display: block; } td.head { padding: 1.4rem 0 .4rem; border-bottom: 1px solid var(--line); }
          td.gap { color: var(--faint); padding-left: .2rem; }
        </style>
      </head>
      <body>
        <h1><xsl:value-of select="@TITLE"/></h1>
        <p class="when">$$Report generated at$$ <xsl:text> </xsl:text><xsl:value-of select="@TIME"/></p>
        <div class="wide">
          <table>
            <thead><tr><th>$$Line No.$$</th><th></th></tr></thead>
            <tbody><xsl:comment>rows</xsl:comment></tbody>
          </table>
        </div>
      </body>
    </html>
  </xsl:template>

  <xsl:template match="/RECORDS"><xsl:apply-templates select="RECORD"/></xsl:template>
  <xsl:template match="RECORD[ProgramName]">
    <tr><td class="head" colspan="2"><xsl:value-of select="ProgramName" disable-output-escaping="yes"/></td></tr>
  </xsl:template>
  <xsl:template match="RECORD[not(ProgramName) and LineNo != '']">
    <tr><td class="no"><xsl:value-of select="LineNo"/></td><td class="code"><xsl:value-of select="Source" disable-output-escaping="yes"/></td></tr>
  </xsl:template>
  <xsl:template match="RECORD[not(ProgramName) and not(LineNo != '')]">
    <tr><td class="no"></td><td class="gap"><xsl:value-of select="Source" disable-output-escaping="yes"/></td></tr>
  </xsl:template>
</xsl:stylesheet>
